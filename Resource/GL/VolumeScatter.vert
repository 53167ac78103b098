#version 120
// One slice of a volume, a polygon in the box (-0.5 to 0.5); its texture coordinate is the
// point in the volume (0 to 1). vDir is the unit view direction in box space, from the eye
// through the point, so the samples between two slices follow the ray.
varying vec3 vTex;
varying vec3 vDir;
void main() {
    vTex = gl_MultiTexCoord0.xyz;
    if (gl_ProjectionMatrix[3][3] != 0.0)
        vDir = normalize((gl_ModelViewMatrixInverse * vec4(0.0, 0.0, -1.0, 0.0)).xyz);
    else
        vDir = normalize(gl_Vertex.xyz - (gl_ModelViewMatrixInverse * vec4(0.0, 0.0, 0.0, 1.0)).xyz);
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
