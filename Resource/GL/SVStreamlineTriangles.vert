#version 150 compatibility
// Shadow volumes of stream-line ribbons: each point in eye space, with what decides whether its
// segment is drawn at all (the clip box's position, the line's number, the point's opacity).
uniform mat4 matrix16;
out vec4 vEye;
out vec3 vClip;
out float vLineID;
out float vAlpha;
void main() {
    vEye = gl_ModelViewMatrix * gl_Vertex;
    vClip = (matrix16 * gl_Vertex).xyz;
    vLineID = gl_MultiTexCoord0.t;
    vAlpha = gl_MultiTexCoord0.q;
    gl_Position = vEye;
}
