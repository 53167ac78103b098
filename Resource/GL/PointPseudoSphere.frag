#version 130
// The sphere of the sprite along this pixel's view ray: the nearer hit gives the light (its true
// normal) and the true depth, so imposters cut each other and meshes exactly. Built a second time
// with PLAIN defined, for draws without lights, fog or dissolve.
#define MAX_LIGHT_RECIEVE 7
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureImage[3];
uniform int dissolveMode;
flat in vec4 vColor;
flat in vec3 vCenter;
flat in float vRadius;
flat in float vHalfExtent;
flat in int vImage;
//##FUNC_SPOT_EFFECT##
//##FUNC_FOG_EFFECT##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    // This pixel on the plane of the centre; the ray from the eye (or, without perspective,
    // straight along -z) through it.
    vec2 pc = gl_PointCoord * 2.0 - 1.0; // the drawing sets the sprite origin to the lower left
    vec3 q = vCenter + vec3(pc * vHalfExtent, 0.0);
    bool perspective = gl_ProjectionMatrix[3][3] == 0.0;
    vec3 o = perspective ? vec3(0.0) : q;
    vec3 d = perspective ? normalize(q) : vec3(0.0, 0.0, -1.0);
    vec3 oc = o - vCenter;
    float b = dot(oc, d);
    float disc = b * b - dot(oc, oc) + vRadius * vRadius;
    if (disc < 0.0)
        discard;
    vec3 p = o + (-b - sqrt(disc)) * d;
    vec3 n = (p - vCenter) / vRadius;
    float zc = gl_ProjectionMatrix[2][2] * p.z + gl_ProjectionMatrix[3][2];
    float wc = gl_ProjectionMatrix[2][3] * p.z + gl_ProjectionMatrix[3][3];
    gl_FragDepth = (gl_DepthRange.diff * (zc / wc) + gl_DepthRange.near + gl_DepthRange.far) * 0.5;
    float shape = 1.0;
    vec2 tc = n.xy * 0.5 + 0.5;
#ifndef PLAIN
    if (vImage == 1)
        shape = texture2D(textureImage[0], tc).a;
    else if (vImage == 2)
        shape = texture2D(textureImage[1], tc).a;
    else if (vImage == 3)
        shape = texture2D(textureImage[2], tc).a;
#endif
#ifdef PLAIN
    float alpha = vColor.a * shape;
    gl_FragColor = vec4(vColor.rgb * alpha, alpha);
#else
    // Lit as the sphere meshes are: ambient, diffuse and a highlight of each light.
    vec3 light = lightNumber > 0 ? vec3(0.0) : vec3(1.0);
    vec3 specular = vec3(0.0);
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - p * gl_LightSource[i].position.w);
        float spot = SpotEffect(i, p);
        light += gl_LightSource[i].ambient.rgb + spot * gl_LightSource[i].diffuse.rgb * max(dot(n, l), 0.0);
        specular += spot * gl_LightSource[i].specular.rgb * pow(max(dot(reflect(-l, n), normalize(-p)), 0.0), 32.0);
    }
    float alpha = vColor.a * shape;
    if (dissolveMode > 0) {
        //##APPLY_ENSEMBLE_DITHERING##
    }
    vec4 outColor = FogEffect(vec4(vColor.rgb * light + specular, alpha), gl_FragDepth);
    gl_FragColor = vec4(outColor.rgb * outColor.a, outColor.a);
#endif
}
