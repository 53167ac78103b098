#version 150 compatibility
// SetParameter GL_GEOMETRY_INPUT_TYPE_EXT=GL_LINES
// SetParameter GL_GEOMETRY_OUTPUT_TYPE_EXT=GL_TRIANGLE_STRIP
// SetParameter GL_GEOMETRY_VERTICES_OUT_EXT=4
// Each segment becomes a quad lineWidth pixels wide on the screen (viewport gives the pixels).
layout(lines) in;
layout(triangle_strip, max_vertices = 4) out;
uniform float lineWidth;
uniform vec4 viewport;
in vec3 gClip[];
in vec3 gEyePosition[];
in float gCurve[];
in float gLineID[];
in float gAlong[];
in float gAlpha[];
out vec3 vClip;
out vec3 vEyePosition;
out float vCurve;
out float vLineID;
out vec2 vRibbon;
out float vAlpha;
void main() {
    vec2 a = gl_in[0].gl_Position.xy / gl_in[0].gl_Position.w * viewport.zw;
    vec2 b = gl_in[1].gl_Position.xy / gl_in[1].gl_Position.w * viewport.zw;
    vec2 d = b - a;
    vec2 side = normalize(dot(d, d) > 0.0 ? vec2(-d.y, d.x) : vec2(0.0, 1.0)) * lineWidth / viewport.zw;
    for (int i = 0; i < 2; ++i) {
        for (int s = -1; s <= 1; s += 2) {
            gl_Position = gl_in[i].gl_Position + vec4(side * float(s) * gl_in[i].gl_Position.w, 0.0, 0.0);
            gl_FrontColor = gl_in[i].gl_FrontColor;
            vClip = gClip[i];
            vEyePosition = gEyePosition[i];
            vCurve = gCurve[i];
            vLineID = gLineID[i];
            vAlpha = gAlpha[i];
            vRibbon = vec2(gAlong[i], float(s) * 0.5 + 0.5);
            EmitVertex();
        }
    }
    EndPrimitive();
}
