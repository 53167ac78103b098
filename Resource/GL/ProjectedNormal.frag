#version 120
uniform int bFlat;
varying vec3 vPosition;
varying vec3 vNormal;
//##FUNC_NORMAL##
void main() {
    vec3 n = SurfaceNormal(vNormal, vPosition, bFlat);
    gl_FragColor = vec4(n * 0.5 + 0.5, 1.0);
}
