#version 120
// Composes the frame over the background: colours above 1 stay, alpha is kept within 0 to 1.
uniform sampler2D textureImage;
void main() {
    vec4 c = texture2D(textureImage, gl_TexCoord[0].st);
    gl_FragColor = vec4(c.rgb, clamp(c.a, 0.0, 1.0));
}
