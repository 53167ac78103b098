#version 130
// The sphere of the sprite along this pixel's view ray: the nearer hit gives the light (its true
// normal) and the true depth, so imposters cut each other and meshes exactly. The vertex shader
// hands over the solve across the sprite; here it is evaluated for this pixel. Built a second time
// with PLAIN defined, for draws without lights, fog or dissolve, and a third time with PLAIN and
// FAR_DEPTH for plain draws whose depth test is "less" with no stencil test.
#define MAX_LIGHT_RECIEVE 7
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
uniform sampler2D textureImage[3];
uniform int dissolveMode;
flat in vec4 vColor;
flat in vec4 vSphere;
flat in vec2 vDepth;
#ifndef PLAIN
flat in vec3 vCenter;
flat in float vRadius;
flat in float vHalfExtent;
flat in vec2 vRay;
flat in int vImage;
#endif
//##FUNC_SPOT_EFFECT##
//##FUNC_FOG_EFFECT##
//##FUNC_ENSEMBLE_DITHERING##
void main() {
    vec2 pc = gl_PointCoord * 2.0 - 1.0; // the drawing sets the sprite origin to the lower left
    float m = vSphere.x + dot(pc, vSphere.yz);
    float disc = m * m + vSphere.w - dot(pc, pc);
#ifdef FAR_DEPTH
    // Off the sphere the far end of the depth range, which a "less" depth test rejects: the
    // fragment leaves nothing, as if discarded, and the shader needs no discard.
    float root = sqrt(max(disc, 0.0));
    gl_FragDepth = disc < 0.0 ? 1.0 : vDepth.x + vDepth.y * (m + root);
#else
    if (disc < 0.0)
        discard;
    float root = sqrt(disc);
    gl_FragDepth = vDepth.x + vDepth.y * (m + root);
#endif
#ifdef PLAIN
    gl_FragColor = vColor;
#else
    // The hit and its normal in eye space, from the same root.
    float s = 1.0 / (1.0 + vRay.x * (m + root));
    vec3 side = vec3(pc * vHalfExtent, vRay.y * root);
    vec3 p = s * (vCenter + vec3(side.xy, 0.0)) + vec3(0.0, 0.0, side.z);
    vec3 n = s * (side - vRay.x * (m + root) * vCenter) / vRadius;
    float shape = 1.0;
    vec2 tc = n.xy * 0.5 + 0.5;
    if (vImage == 1)
        shape = texture2D(textureImage[0], tc).a;
    else if (vImage == 2)
        shape = texture2D(textureImage[1], tc).a;
    else if (vImage == 3)
        shape = texture2D(textureImage[2], tc).a;
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
