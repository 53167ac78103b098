#version 130
// The point's colour (from the colour table, by the vertex), lit as a small sphere (a disc) or flat (a square),
// its shape from its image; output with premultiplied alpha. Built a second time with PLAIN
// defined, for draws without lights, fog or dissolve: that variant does only the colour.
#define MAX_LIGHT_RECIEVE 7
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureImage[3];
uniform int dissolveMode;
flat in vec4 vColor;
varying vec3 vEyePosition;
flat in int vImage;
flat in int vSquare;
//##FUNC_FOG_EFFECT##
//##FUNC_ENSEMBLE_DITHERING##
#ifdef GRID
flat in vec3 vDisc;
#endif
#if defined(SQUARE) || defined(CIRCLE)
// One shape, no image, no light: the premultiplied colour as it came, the circle cut round. A
// square has no discard at all, which keeps the depth test ahead of the shader.
void main() {
#if defined(GRID)
    // Outside the disc the far end of the depth range, which the "less" depth test these draws
    // run under rejects: the fragment leaves nothing, as if discarded, and needs no discard.
    vec2 d = gl_FragCoord.xy - vDisc.xy;
    gl_FragDepth = dot(d, d) > vDisc.z ? 1.0 : gl_FragCoord.z;
#elif defined(CIRCLE)
    vec2 pc = gl_PointCoord * 2.0 - 1.0;
    if (dot(pc, pc) > 1.0)
        discard;
#endif
    gl_FragColor = vColor;
}
#else
void main() {
    vec2 pc = gl_PointCoord * 2.0 - 1.0;
    float r2 = dot(pc, pc);
    float shape = 1.0;
    if (vSquare == 0 && vImage == 0 && r2 > 1.0)
        discard;
#ifndef PLAIN
    if (vImage == 1)
        shape = texture2D(textureImage[0], gl_PointCoord).a;
    else if (vImage == 2)
        shape = texture2D(textureImage[1], gl_PointCoord).a;
    else if (vImage == 3)
        shape = texture2D(textureImage[2], gl_PointCoord).a;
#endif
    vec4 c = vColor;
#ifdef PLAIN
    // Unlit, unfogged, whole: the point as it is.
    gl_FragColor = vec4(c.rgb * (c.a * shape), c.a * shape);
#else
    vec3 n = vSquare != 0 ? vec3(0.0, 0.0, 1.0) : vec3(pc, sqrt(max(1.0 - r2, 0.0))); // origin lower left
    float light = lightNumber > 0 ? 0.0 : 1.0;
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - vEyePosition * gl_LightSource[i].position.w);
        light += max(dot(n, l), 0.0);
    }
    float alpha = c.a * shape;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    vec4 outColor = FogEffect(vec4(c.rgb * light, alpha), gl_FragCoord.z);
    gl_FragColor = vec4(outColor.rgb * outColor.a, outColor.a);
#endif
}
#endif
