// Projection helpers of the frame, over the fixed-function matrices. GL thread only.
#pragma once

class Direction_cls;
class Position_cls;

class GLPerspective_cls {
public:
    // Viewport over the size; the projection matrix is selected and reset.
    static void SetProjection(int width, int height);
    static void SetFrustum(int width, int height, double angle, double zNear, double zFar);
    // Tile (tileX, tileY) of tilesX by tilesY tiles of the symmetric frustum.
    static void SetFrustumTiled(int width, int height, double angle, double zNear, double zFar, int tilesX,
                                int tilesY, int tileX, int tileY);
    // A window into the symmetric frustum: centre and size in unit coordinates of the whole
    // frustum (0, 0 bottom left, 1, 1 top right). The hit test looks through it.
    static void SetFrustumPartial(int width, int height, double angle, double zNear, double zFar,
                                  double centreX, double centreY, double size);
    // Selects the model-view and multiplies by the view of the pose: the rotation whose rows are
    // the right, top and negated target vectors, then the translation by the negated position.
    static void SetModelView(const Position_cls& position, const Direction_cls& direction);
    // Pushes both matrices and sets a viewport and a 2D projection over the size; Pop2DMatrix
    // pops both and leaves the model-view selected.
    static void Push2DMatrix(int width, int height);
    static void Pop2DMatrix();
};
