#version 120
// Streamlines as GL lines. The first texture coordinate is the colour curve coordinate, the
// second the line's id (for thinning). matrix16 maps the position into the box of the clip.
uniform mat4 matrix16;
varying vec3 vClip;
varying vec3 vEyePosition;
varying float vCurve;
varying float vLineID;
void main() {
    vClip = (matrix16 * gl_Vertex).xyz;
    vEyePosition = (gl_ModelViewMatrix * gl_Vertex).xyz;
    vCurve = gl_MultiTexCoord0.s;
    vLineID = gl_MultiTexCoord0.t;
    gl_FrontColor = gl_Color;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
