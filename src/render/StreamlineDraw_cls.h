// The drawing of stream-line objects, one per view: each object's prepared lines go to vertex
// buffers (positions; and the colour-curve coordinate, the line's number and the distance along
// the line as one texture coordinate), uploaded only when the prepared frame, the colour rule or
// the curve's range changed. Lines are drawn as GL lines through "StreamlineBasic" or as ribbons
// of "LineWidth=" pixels facing the camera through "StreamlineTriangles"; a line of one point is
// a point of that size. The clip box (an active "Trimming_cls" modifier's, else the object's own),
// the trimming's soft edge and its share of lines kept are applied per fragment; the opacity that
// the data processes gave each point multiplies the colour's. Ribbons cast shadows: the same
// quads, closed, through "SVStreamlineTriangles". The lines' colour is their own, so no shadow
// falls on them, and a later shadow step, which adds light only, draws them black.
// GL thread only.
#pragma once

#include "DataDrawBase_cls.h"
#include "GLObject_cls.h"

#include <map>
#include <vector>

class GLDrawStatus_cls;
class SceneObj_cls;
class StreamlineBasicParam_cls;
class StreamlineForRender_cls;
class StreamlineTriangleParam_cls;
class Streamline_cls;

class StreamlineDraw_cls : public DataDrawBase_cls {
public:
    // Puts the draw entry and the maker of this holder into the kind table.
    static void Register();

    ~StreamlineDraw_cls() override;
    // Prepares the object's frame and draws it with its matrix on the model-view. Nothing is
    // drawn when the frame has no lines (no file, a bad file, everything clipped).
    void GLDraw(Streamline_cls& obj, GLDrawStatus_cls& status);
    // The shadow volumes of the ribbons of the frame the lit draw of this step uploaded; lines
    // and points cast none, nor does a material with "CastShadow=" 0.
    void GLDrawSV(Streamline_cls& obj, GLDrawStatus_cls& status);

    // ---- what the last draw did, for the tests and benchmarks ----
    int GetUploadCount(const Streamline_cls* p) const;
    int GetDrawnPointCount(const Streamline_cls* p) const;

private:
    class Object_cls {
    public:
        GLBuffer_cls mPosition;
        GLBuffer_cls mCoord;
        std::vector<GLint> mVFirst; // lines of two points or more
        std::vector<GLsizei> mVCount;
        std::vector<GLint> mVSingle; // lines of one point
        int mPointCount = 0;
        wxString mStrStamp;
        wxString mStrTableStamp;
        int mUploadCount = 0;
    };
    // The clip box, its soft edge and the share of lines kept.
    static void SetClip(Streamline_cls& obj, double nt, StreamlineBasicParam_cls& params);
    // The clip box, the ribbon's width and mapping, the viewport of now.
    static void SetRibbon(Streamline_cls& obj, double nt, StreamlineTriangleParam_cls& params);
    static void BindBuffers(const Object_cls& o);
    // Fills the buffers from the prepared set.
    void Upload(Object_cls& o, const StreamlineForRender_cls& set, Streamline_cls& obj, double nt);

    std::map<const Streamline_cls*, Object_cls> mMapObject;
};
