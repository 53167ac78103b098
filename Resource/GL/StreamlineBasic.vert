#version 120
// Streamlines as GL lines. The texture coordinate holds the colour curve coordinate, the line's
// id (for thinning), the place along the line and the point's opacity. matrix16 maps the position into the box of the clip.
uniform mat4 matrix16;
varying vec3 vClip;
varying vec3 vEyePosition;
varying float vCurve;
varying float vLineID;
varying float vAlpha;
void main() {
    vClip = (matrix16 * gl_Vertex).xyz;
    vEyePosition = (gl_ModelViewMatrix * gl_Vertex).xyz;
    vCurve = gl_MultiTexCoord0.s;
    vLineID = gl_MultiTexCoord0.t;
    vAlpha = gl_MultiTexCoord0.q;
    gl_FrontColor = gl_Color;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
