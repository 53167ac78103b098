#version 120
uniform int fogMode;
uniform int dissolveMode;
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    float alpha = gl_Color.a;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    vec4 c = vec4(gl_Color.rgb, alpha);
    // Lines take the fixed fog colour by the fog coordinate when fog is on.
    if (fogMode != 0)
        c.rgb = mix(gl_Fog.color.rgb, c.rgb, clamp((gl_Fog.end - gl_FogFragCoord) * gl_Fog.scale, 0.0, 1.0));
    gl_FragColor = c;
}
