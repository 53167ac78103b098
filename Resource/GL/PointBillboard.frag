#version 130
// The billboard's square met along this pixel's view ray: its image (or the plain square) in the
// colour of the colour table, at its true depth; premultiplied alpha.
#define MAX_LIGHT_RECIEVE 7
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureImage[3];
uniform int dissolveMode;
flat in vec4 vColor;
flat in float vHalfExtent;
flat in vec3 vCenter;
flat in vec3 vAxisU;
flat in vec3 vAxisV;
flat in float vHalf;
flat in int vImage;
//##FUNC_FOG_EFFECT##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec2 pc = gl_PointCoord * 2.0 - 1.0; // the drawing sets the sprite origin to the lower left
    vec3 q = vCenter + vec3(pc * vHalfExtent, 0.0);
    bool perspective = gl_ProjectionMatrix[3][3] == 0.0;
    vec3 o = perspective ? vec3(0.0) : q;
    vec3 d = perspective ? normalize(q) : vec3(0.0, 0.0, -1.0);
    vec3 n = cross(vAxisU, vAxisV);
    float denom = dot(d, n);
    if (abs(denom) < 1e-6)
        discard;
    float t = dot(vCenter - o, n) / denom;
    vec3 p = o + t * d;
    vec2 local = vec2(dot(p - vCenter, vAxisU), dot(p - vCenter, vAxisV)) / vHalf;
    if (abs(local.x) > 1.0 || abs(local.y) > 1.0)
        discard;
    float zc = gl_ProjectionMatrix[2][2] * p.z + gl_ProjectionMatrix[3][2];
    float wc = gl_ProjectionMatrix[2][3] * p.z + gl_ProjectionMatrix[3][3];
    gl_FragDepth = (gl_DepthRange.diff * (zc / wc) + gl_DepthRange.near + gl_DepthRange.far) * 0.5;
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
