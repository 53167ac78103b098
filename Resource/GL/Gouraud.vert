#version 120
// Per-vertex lighting by the fixed-pipeline lights 0 to lightNumber - 1.
//##COMMON_DEFINITIONS_SHADER##
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
varying vec4 vColor;
//##FUNC_SPOT_EFFECT##
void main() {
    vec3 p = (gl_ModelViewMatrix * gl_Vertex).xyz;
    vec3 n = normalize(gl_NormalMatrix * gl_Normal);
    vec4 c = gl_FrontLightModelProduct.sceneColor;
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - p * gl_LightSource[i].position.w);
        float spot = SpotEffect(i, p);
        float d = max(dot(n, l), 0.0);
        vec3 h = normalize(l + vec3(0.0, 0.0, 1.0));
        float s = d > 0.0 ? pow(max(dot(n, h), 0.0), gl_FrontMaterial.shininess) : 0.0;
        c += gl_FrontLightProduct[i].ambient +
             spot * (gl_FrontLightProduct[i].diffuse * d + gl_FrontLightProduct[i].specular * s);
    }
    vColor = vec4(c.rgb, gl_FrontMaterial.diffuse.a);
    gl_TexCoord[0] = gl_TextureMatrix[0] * gl_MultiTexCoord0;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
