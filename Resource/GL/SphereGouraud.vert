#version 130
// Spheres: the shared sphere mesh drawn once per particle as an instance, moved to the
// particle's centre and scaled by its radius. The colour coordinates come as one vec2
// (colorCurveST) per instance; the separate colorCurveS and colorCurveT are not used here.
//##COMMON_DEFINITIONS_SHADER##
uniform int lightNumber;
uniform int lightRecieve[MAX_LIGHT_RECIEVE];
// One instance per particle: centre and radius, set per instance.
attribute vec4 instancePosSize;
attribute vec2 colorCurveST;
attribute float filterAlpha;
in int paramBit;
varying vec2 vCurve;
varying float vAlpha;
flat out int vImage;
varying vec3 vLight;
//##FUNC_SPOT_EFFECT##
void main() {
    vec4 vertex = vec4(gl_Vertex.xyz * instancePosSize.w + instancePosSize.xyz, 1.0);
    vec3 p = (gl_ModelViewMatrix * vertex).xyz;
    vec3 n = normalize(gl_NormalMatrix * gl_Normal);
    vec3 light = vec3(0.0);
    for (int i = 0; i < MAX_LIGHT_RECIEVE; ++i) {
        if (i >= lightNumber || lightRecieve[i] == 0)
            continue;
        vec3 l = normalize(gl_LightSource[i].position.xyz - p * gl_LightSource[i].position.w);
        light += gl_LightSource[i].ambient.rgb + SpotEffect(i, p) * gl_LightSource[i].diffuse.rgb * max(dot(n, l), 0.0);
    }
    vLight = lightNumber > 0 ? light : vec3(1.0);
    vCurve = colorCurveST;
    vAlpha = filterAlpha;
    vImage = (paramBit >> 1) & 3;
    gl_TexCoord[0] = gl_MultiTexCoord0;
    gl_Position = gl_ModelViewProjectionMatrix * vertex;
}
