#version 150 compatibility
// SetParameter GL_GEOMETRY_INPUT_TYPE_EXT=GL_TRIANGLES_ADJACENCY_EXT
// SetParameter GL_GEOMETRY_OUTPUT_TYPE_EXT=GL_TRIANGLE_STRIP
// SetParameter GL_GEOMETRY_VERTICES_OUT_EXT=18
// The lines above are read by the host for drivers of the old extension; the layout below is
// what GLSL 1.50 uses. Each silhouette edge (lit triangle, unlit neighbour) becomes a quad pushed
// shadowLength away from the light (to infinity when it is 0); a closed mesh (forClosed) also gets its caps. cullingSide
// picks which faces count as lit; offsetFactor moves the volume off the surface.
layout(triangles_adjacency) in;
layout(triangle_strip, max_vertices = 18) out;
uniform float shadowLength;
uniform float offsetFactor;
uniform int cullingSide;
uniform int forClosed;
in vec4 vEye[];
vec3 LightDir(vec3 p) {
    vec4 l = gl_LightSource[0].position;
    return normalize(p * l.w - l.xyz);
}
bool Less(vec3 u, vec3 v) {
    return u.x < v.x || (u.x == v.x && (u.y < v.y || (u.y == v.y && u.z < v.z)));
}
// A triangle is judged by its own invocation and by each neighbour's: all start from the same
// corner, so that they compute alike and agree on every edge of the silhouette.
bool Lit(vec3 a, vec3 b, vec3 c) {
    if (Less(b, a) && Less(b, c)) {
        vec3 t = a;
        a = b;
        b = c;
        c = t;
    } else if (Less(c, a) && Less(c, b)) {
        vec3 t = c;
        c = b;
        b = a;
        a = t;
    }
    vec3 n = cross(b - a, c - a);
    float side = dot(n, -LightDir((a + b + c) / 3.0));
    return cullingSide == 0 ? side > 0.0 : side < 0.0;
}
void Emit(vec3 p) {
    gl_Position = gl_ProjectionMatrix * vec4(p, 1.0);
    EmitVertex();
}
// The far end of the volume: shadowLength away from the light, or at infinity along the light
// (w = 0) when it is 0 or less; depth clamping keeps either inside the depth range.
void EmitFar(vec3 p, vec3 d) {
    gl_Position = shadowLength > 0.0 ? gl_ProjectionMatrix * vec4(p + d * shadowLength, 1.0)
                                     : gl_ProjectionMatrix * vec4(d, 0.0);
    EmitVertex();
}
// Every triangle casts, whichever side faces the light: one that faces away is taken in the
// reverse order, so that its volume too points away from the light and is closed the right way
// round. An edge is a wall where the mesh ends or where the two triangles face the light with
// different sides; between two triangles facing alike the walls would cancel and are left out.
void main() {
    vec3 p[6];
    for (int i = 0; i < 6; ++i)
        p[i] = vEye[i].xyz;
    bool lit = Lit(p[0], p[2], p[4]);
    for (int e = 0; e < 3; ++e) {
        int a = e * 2;
        int b = (e * 2 + 2) % 6;
        int adj = e * 2 + 1;
        // An edge without neighbour (open mesh) repeats a vertex of the triangle.
        bool open = p[adj] == p[a] || p[adj] == p[b];
        if (open || Lit(p[a], p[adj], p[b]) != lit) {
            if (!lit) {
                int t = a;
                a = b;
                b = t;
            }
            vec3 oa = p[a] + LightDir(p[a]) * offsetFactor;
            vec3 ob = p[b] + LightDir(p[b]) * offsetFactor;
            Emit(oa);
            EmitFar(oa, LightDir(p[a]));
            Emit(ob);
            EmitFar(ob, LightDir(p[b]));
            EndPrimitive();
        }
    }
    if (forClosed != 0) {
        int first = lit ? 0 : 4;
        int step = lit ? 2 : -2;
        for (int k = 0; k < 3; ++k) {
            int i = first + k * step;
            Emit(p[i] + LightDir(p[i]) * offsetFactor);
        }
        EndPrimitive();
        for (int k = 2; k >= 0; --k) {
            int i = first + k * step;
            EmitFar(p[i] + LightDir(p[i]) * offsetFactor, LightDir(p[i]));
        }
        EndPrimitive();
    }
}
