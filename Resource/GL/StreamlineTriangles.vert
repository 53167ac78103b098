#version 150 compatibility
// Streamlines as ribbons of lineWidth pixels: the geometry shader widens each segment.
uniform mat4 matrix16;
out vec3 gClip;
out vec3 gEyePosition;
out float gCurve;
out float gLineID;
out float gAlong;
out float gAlpha;
void main() {
    gClip = (matrix16 * gl_Vertex).xyz;
    gEyePosition = (gl_ModelViewMatrix * gl_Vertex).xyz;
    gCurve = gl_MultiTexCoord0.s;
    gLineID = gl_MultiTexCoord0.t;
    gAlong = gl_MultiTexCoord0.p;
    gAlpha = gl_MultiTexCoord0.q;
    gl_FrontColor = gl_Color;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
