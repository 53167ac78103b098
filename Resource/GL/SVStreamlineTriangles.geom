#version 150 compatibility
// SetParameter GL_GEOMETRY_INPUT_TYPE_EXT=GL_LINES
// SetParameter GL_GEOMETRY_OUTPUT_TYPE_EXT=GL_TRIANGLE_STRIP
// SetParameter GL_GEOMETRY_VERTICES_OUT_EXT=24
// The lines above are read by the host for drivers of the old extension; the layout below is
// what GLSL 1.50 uses. Each segment is widened to the quad that "StreamlineTriangles" draws
// (lineWidth pixels, facing the camera) and that quad's closed volume is emitted: its near cap,
// its far cap shadowLength away from light 0 (at infinity when 0; both caps only with forClosed),
// and the four walls; cullingSide turns it inside out, as in the mesh programs. A segment
// that the drawing leaves out (thinned away, outside the clip box, or at a point of no opacity)
// casts nothing.
layout(lines) in;
layout(triangle_strip, max_vertices = 24) out;
uniform float shadowLength;
uniform float offsetFactor;
uniform int cullingSide;
uniform int forClosed;
uniform float lineWidth;
uniform vec4 viewport;
uniform int useClip;
uniform vec3 clipBoxMin;
uniform vec3 clipBoxMax;
uniform float thinningFactor;
in vec4 vEye[];
in vec3 vClip[];
in float vLineID[];
in float vAlpha[];
vec3 LightDir(vec3 p) {
    vec4 l = gl_LightSource[0].position;
    return normalize(p * l.w - l.xyz);
}
void Emit(vec3 p) {
    gl_Position = gl_ProjectionMatrix * vec4(p + LightDir(p) * offsetFactor, 1.0);
    EmitVertex();
}
void EmitFar(vec3 p) {
    vec3 d = LightDir(p);
    gl_Position = shadowLength > 0.0 ? gl_ProjectionMatrix * vec4(p + d * (offsetFactor + shadowLength), 1.0)
                                     : gl_ProjectionMatrix * vec4(d, 0.0);
    EmitVertex();
}
bool Inside(vec3 p) {
    return useClip == 0 || (all(greaterThanEqual(p, clipBoxMin)) && all(lessThanEqual(p, clipBoxMax)));
}
void main() {
    if (fract(vLineID[0] * 0.61803) >= thinningFactor || vAlpha[0] <= 0.0 || vAlpha[1] <= 0.0 ||
        !Inside(vClip[0]) || !Inside(vClip[1]))
        return;
    // As the ribbon: a side of lineWidth pixels across the segment on the screen. A clip-space
    // offset of side * w is an eye-space one of side * w over the projection's scale.
    vec4 c0 = gl_ProjectionMatrix * vEye[0];
    vec4 c1 = gl_ProjectionMatrix * vEye[1];
    vec2 d = c1.xy / c1.w * viewport.zw - c0.xy / c0.w * viewport.zw;
    vec2 side = normalize(dot(d, d) > 0.0 ? vec2(-d.y, d.x) : vec2(0.0, 1.0)) * lineWidth / viewport.zw;
    vec2 scale = vec2(gl_ProjectionMatrix[0][0], gl_ProjectionMatrix[1][1]);
    vec3 s0 = vec3(side * c0.w / scale, 0.0);
    vec3 s1 = vec3(side * c1.w / scale, 0.0);
    // The quad as a loop, turned so that it faces the light.
    vec3 q[4];
    q[0] = vEye[0].xyz - s0;
    q[1] = vEye[1].xyz - s1;
    q[2] = vEye[1].xyz + s1;
    q[3] = vEye[0].xyz + s0;
    vec3 n = cross(q[1] - q[0], q[3] - q[0]) + cross(q[3] - q[2], q[1] - q[2]);
    if ((dot(n, -LightDir((q[0] + q[2]) * 0.5)) < 0.0) != (cullingSide != 0)) {
        vec3 t = q[1];
        q[1] = q[3];
        q[3] = t;
    }
    for (int e = 0; e < 4; ++e) {
        vec3 a = q[e];
        vec3 b = q[(e + 1) % 4];
        Emit(a);
        EmitFar(a);
        Emit(b);
        EmitFar(b);
        EndPrimitive();
    }
    if (forClosed == 0)
        return;
    Emit(q[0]);
    Emit(q[1]);
    Emit(q[3]);
    Emit(q[2]);
    EndPrimitive();
    EmitFar(q[0]);
    EmitFar(q[3]);
    EmitFar(q[1]);
    EmitFar(q[2]);
    EndPrimitive();
}
