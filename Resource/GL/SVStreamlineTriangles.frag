#version 150 compatibility
// Only the stencil counts: the colour is never seen.
void main() {
    gl_FragColor = vec4(1.0);
}
