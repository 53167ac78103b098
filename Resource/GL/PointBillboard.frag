#version 130
// The billboard's square met along this pixel's view ray: its image (or the plain square) in the
// colour of the colour table, at its true depth; premultiplied alpha. Where the ray meets the
// plane comes from the sprite's per-particle functions of the window position. Built with
// FAR_DEPTH (plain only) for draws whose depth test is "less" with no stencil test.
#define MAX_LIGHT_RECIEVE 7
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureImage[3];
uniform int dissolveMode;
flat in vec4 vColor;
flat in vec2 vOrigin;
flat in vec2 vRowU;
flat in vec2 vRowV;
flat in vec3 vRowW;
flat in vec3 vDepth;
flat in vec3 vCenter;
flat in vec3 vAxisU;
flat in vec3 vAxisV;
flat in float vHalf;
flat in int vImage;
//##FUNC_FOG_EFFECT##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec2 d = gl_FragCoord.xy - vOrigin;
    vec2 local = vec2(dot(vRowU, d), dot(vRowV, d)) / (vRowW.z + dot(vRowW.xy, d));
#ifdef FAR_DEPTH
    // Outside the square the far end of the depth range, which a "less" depth test rejects: the
    // fragment leaves nothing, as if discarded, and the shader needs no discard.
    gl_FragDepth = abs(local.x) > 1.0 || abs(local.y) > 1.0 ? 1.0 : vDepth.z + dot(vDepth.xy, d);
#else
    if (abs(local.x) > 1.0 || abs(local.y) > 1.0)
        discard;
    gl_FragDepth = vDepth.z + dot(vDepth.xy, d);
#endif
    vec2 tc = local * 0.5 + 0.5;
    vec4 image = vec4(1.0);
#ifndef PLAIN
    if (vImage == 1)
        image = texture2D(textureImage[0], tc);
    else if (vImage == 2)
        image = texture2D(textureImage[1], tc);
    else if (vImage == 3)
        image = texture2D(textureImage[2], tc);
#endif
    vec4 c = vColor * image;
#ifdef PLAIN
    gl_FragColor = vec4(c.rgb * c.a, c.a);
#else
    // The met point lies on the square's plane at its square coordinates.
    vec3 p = vCenter + vHalf * (local.x * vAxisU + local.y * vAxisV);
    vec3 n = cross(vAxisU, vAxisV);
    float light = lightNumber > 0 ? 0.0 : 1.0;
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - p * gl_LightSource[i].position.w);
        light += abs(dot(n, l));
    }
    float alpha = c.a;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    vec4 outColor = FogEffect(vec4(c.rgb * light, alpha), gl_FragDepth);
    gl_FragColor = vec4(outColor.rgb * outColor.a, outColor.a);
#endif
}
