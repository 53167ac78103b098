#version 130
// Particles as points ("Point": squares, "Circle": discs). pointSize is the particle's size;
// pointSizeFactor turns it into pixels, and with baseDistance above 0 the size falls with the
// eye distance (nominal at baseDistance). Below one pixel a point keeps one pixel and fades by the
// area it would cover; a point whose alpha falls below alphaCrit is not drawn. paramBit: bit 1 and
// 2 the point's image (0: none, 1 to 3: textureImage[0 to 2]), bit 3 a square point. Built once
// more with SQUARE or CIRCLE (and PLAIN) for points of one shape without an image, which hand
// their colour over premultiplied, and with GRID for circles of whole pixels drawn without sprite
// coordinates (squares on the pixel grid cover the same pixels as sprites of a whole size) under
// a "less" depth test with no stencil test.
uniform vec4 viewport;
uniform float baseDistance;
uniform float pointSizeFactor;
uniform float alphaCrit;
uniform sampler2D textureColorCurve;
attribute float pointSize;
attribute float colorCurveS;
attribute float colorCurveT;
attribute float filterAlpha;
in int paramBit;
// The colour of the whole point, looked up once here.
flat out vec4 vColor;
varying vec3 vEyePosition;
flat out int vImage;
flat out int vSquare;
#ifdef GRID
// The disc in window units: its centre and squared radius.
flat out vec3 vDisc;
#endif
void main() {
    vec4 eye = gl_ModelViewMatrix * gl_Vertex;
    vEyePosition = eye.xyz;
    float px = pointSize * pointSizeFactor;
    if (baseDistance > 0.0)
        px *= baseDistance / max(-eye.z, 1e-6);
    float a = filterAlpha;
    if (px < 1.0) {
        a *= max(px, 0.0) * max(px, 0.0);
        px = 1.0;
    }
    gl_PointSize = px;
    vColor = texture2DLod(textureColorCurve, vec2(colorCurveS, colorCurveT), 0.0);
    vColor.a *= a;
#if defined(SQUARE) || defined(CIRCLE)
    // The whole point has one colour: premultiplied here once, not in each fragment.
    vColor.rgb *= vColor.a;
#endif
    vImage = (paramBit >> 1) & 3;
    vSquare = (paramBit >> 3) & 1;
    gl_Position = gl_ProjectionMatrix * eye;
#ifdef GRID
    vDisc = vec3(viewport.xy + (gl_Position.xy / gl_Position.w + 1.0) * 0.5 * viewport.zw, 0.25 * px * px);
#endif
    // Outside the clip volume: the point is dropped before rasterisation.
    if (!(a >= alphaCrit))
        gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
}
