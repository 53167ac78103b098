#version 120
// The depth texture as eye distance in the red channel: projMatrix10 and projMatrix14 are the
// two projection entries that map eye z to window depth.
uniform sampler2D textureImage;
uniform float projMatrix10;
uniform float projMatrix14;
void main() {
    float depth = texture2D(textureImage, gl_TexCoord[0].st).r;
    float ndc = depth * 2.0 - 1.0;
    float dist = projMatrix14 / (ndc + projMatrix10);
    gl_FragColor = vec4(dist, dist, dist, 1.0);
}
