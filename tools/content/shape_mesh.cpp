#include "shape_mesh.h"

#include <algorithm>
#include <cmath>

static const float kDegrees = 0.017453292f;

Vec3 V3(float x, float y, float z) {
    return Vec3{x, y, z};
}
Vec3 Add(Vec3 a, Vec3 b) {
    return V3(a.x + b.x, a.y + b.y, a.z + b.z);
}
Vec3 Sub(Vec3 a, Vec3 b) {
    return V3(a.x - b.x, a.y - b.y, a.z - b.z);
}
Vec3 Scale(Vec3 a, float s) {
    return V3(a.x * s, a.y * s, a.z * s);
}
Vec3 Cross(Vec3 a, Vec3 b) {
    return V3(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
}
float Dot(Vec3 a, Vec3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
float Length(Vec3 a) {
    return std::sqrt(Dot(a, a));
}
Vec3 Normalise(Vec3 a) {
    float l = Length(a);
    return l > 0.0f ? Scale(a, 1.0f / l) : V3(0, 1, 0);
}

Transform Identity() {
    return Transform{{1, 0, 0, 0, 1, 0, 0, 0, 1}, V3(0, 0, 0)};
}
Transform Translation(Vec3 t) {
    Transform r = Identity();
    r.t = t;
    return r;
}
Transform Scaling(Vec3 s) {
    return Transform{{s.x, 0, 0, 0, s.y, 0, 0, 0, s.z}, V3(0, 0, 0)};
}
Transform RotationX(float degrees) {
    float c = std::cos(degrees * kDegrees), s = std::sin(degrees * kDegrees);
    return Transform{{1, 0, 0, 0, c, -s, 0, s, c}, V3(0, 0, 0)};
}
Transform RotationY(float degrees) {
    float c = std::cos(degrees * kDegrees), s = std::sin(degrees * kDegrees);
    return Transform{{c, 0, s, 0, 1, 0, -s, 0, c}, V3(0, 0, 0)};
}
Transform RotationZ(float degrees) {
    float c = std::cos(degrees * kDegrees), s = std::sin(degrees * kDegrees);
    return Transform{{c, -s, 0, s, c, 0, 0, 0, 1}, V3(0, 0, 0)};
}
Transform Compose(const Transform& a, const Transform& b) {
    Transform r;
    for (int i = 0; i < 3; i++) {
        for (int j = 0; j < 3; j++) {
            r.m[i * 3 + j] = a.m[i * 3] * b.m[j] + a.m[i * 3 + 1] * b.m[3 + j] + a.m[i * 3 + 2] * b.m[6 + j];
        }
    }
    r.t = Apply(a, b.t);
    return r;
}
Vec3 ApplyDirection(const Transform& tr, Vec3 d) {
    const float* m = tr.m;
    return V3(m[0] * d.x + m[1] * d.y + m[2] * d.z, m[3] * d.x + m[4] * d.y + m[5] * d.z,
              m[6] * d.x + m[7] * d.y + m[8] * d.z);
}
Vec3 Apply(const Transform& tr, Vec3 p) {
    return Add(ApplyDirection(tr, p), tr.t);
}

ShapeMesh::ShapeMesh() : transform(Identity()), bone(0), smoothGroup(1) {}

int ShapeMesh::AddVertex(Vec3 p) {
    positions.push_back(Apply(transform, p));
    bones.push_back(bone);
    return static_cast<int>(positions.size()) - 1;
}

void ShapeMesh::AddTriangle(int a, int b, int c, const float uv[3][2], int group) {
    ShapeTriangle t;
    t.v[0] = a;
    t.v[1] = b;
    t.v[2] = c;
    for (int k = 0; k < 3; k++) {
        t.uv[k][0] = uv[k][0];
        t.uv[k][1] = uv[k][1];
    }
    t.smoothGroup = group;
    triangles.push_back(t);
}

void ShapeMesh::AddQuad(Vec3 a, Vec3 b, Vec3 c, Vec3 d, const float uv[4][2], int group) {
    int ia = AddVertex(a), ib = AddVertex(b), ic = AddVertex(c), id = AddVertex(d);
    const float t1[3][2] = {{uv[0][0], uv[0][1]}, {uv[1][0], uv[1][1]}, {uv[2][0], uv[2][1]}};
    const float t2[3][2] = {{uv[0][0], uv[0][1]}, {uv[2][0], uv[2][1]}, {uv[3][0], uv[3][1]}};
    AddTriangle(ia, ib, ic, t1, group);
    AddTriangle(ia, ic, id, t2, group);
}

// A flat face with texture coordinates projected from the two axes that span it.
static void PlanarQuad(ShapeMesh* mesh, Vec3 a, Vec3 b, Vec3 c, Vec3 d, int uAxis, int vAxis,
                       float texScale) {
    const Vec3* corners[4] = {&a, &b, &c, &d};
    float uv[4][2];
    for (int k = 0; k < 4; k++) {
        const float* p = &corners[k]->x;
        uv[k][0] = p[uAxis] * texScale;
        uv[k][1] = -p[vAxis] * texScale;
    }
    mesh->AddQuad(a, b, c, d, uv, 0);
}

void ShapeMesh::AddBox(Vec3 lo, Vec3 hi, float texScale) {
    AddWedge(lo, hi, hi.y, texScale);
}

void ShapeMesh::AddWedge(Vec3 lo, Vec3 hi, float topAtHiX, float texScale) {
    float y0 = lo.y;
    Vec3 p[8] = {V3(lo.x, y0, lo.z),       V3(hi.x, y0, lo.z),   V3(hi.x, y0, hi.z),
                 V3(lo.x, y0, hi.z),       V3(lo.x, hi.y, lo.z), V3(hi.x, topAtHiX, lo.z),
                 V3(hi.x, topAtHiX, hi.z), V3(lo.x, hi.y, hi.z)};
    // Faces counter-clockwise from outside: top, bottom, +z, -z, +x, -x.
    PlanarQuad(this, p[7], p[6], p[5], p[4], 0, 2, texScale);
    PlanarQuad(this, p[0], p[1], p[2], p[3], 0, 2, texScale);
    PlanarQuad(this, p[3], p[2], p[6], p[7], 0, 1, texScale);
    PlanarQuad(this, p[1], p[0], p[4], p[5], 0, 1, texScale);
    if (topAtHiX > y0) {
        PlanarQuad(this, p[2], p[1], p[5], p[6], 2, 1, texScale);
    }
    if (hi.y > y0) {
        PlanarQuad(this, p[0], p[3], p[7], p[4], 2, 1, texScale);
    }
}

void ShapeMesh::AddCylinder(Vec3 base, float radiusBottom, float radiusTop, float height, int sides,
                            bool caps, float texScale) {
    float circumference = 6.2831853f * std::max(radiusBottom, radiusTop);
    for (int i = 0; i < sides; i++) {
        float a0 = 6.2831853f * i / sides, a1 = 6.2831853f * (i + 1) / sides;
        Vec3 b0 = Add(base, V3(std::sin(a0) * radiusBottom, 0, std::cos(a0) * radiusBottom));
        Vec3 b1 = Add(base, V3(std::sin(a1) * radiusBottom, 0, std::cos(a1) * radiusBottom));
        Vec3 t0 = Add(base, V3(std::sin(a0) * radiusTop, height, std::cos(a0) * radiusTop));
        Vec3 t1 = Add(base, V3(std::sin(a1) * radiusTop, height, std::cos(a1) * radiusTop));
        float u0 = circumference * texScale * i / sides, u1 = circumference * texScale * (i + 1) / sides;
        float v1 = -height * texScale;
        const float uv[4][2] = {{u0, 0}, {u1, 0}, {u1, v1}, {u0, v1}};
        int ib0 = AddVertex(b0), ib1 = AddVertex(b1), it1 = AddVertex(t1), it0 = AddVertex(t0);
        const float ta[3][2] = {{uv[0][0], uv[0][1]}, {uv[1][0], uv[1][1]}, {uv[2][0], uv[2][1]}};
        const float tb[3][2] = {{uv[0][0], uv[0][1]}, {uv[2][0], uv[2][1]}, {uv[3][0], uv[3][1]}};
        if (radiusBottom > 0.0f) {
            AddTriangle(ib0, ib1, it1, ta, smoothGroup);
        }
        if (radiusTop > 0.0f) {
            AddTriangle(ib0, it1, it0, tb, smoothGroup);
        }
        if (caps) {
            const float capTop[3][2] = {{0.5f, 0.5f},
                                        {0.5f + 0.5f * std::sin(a0), 0.5f + 0.5f * std::cos(a0)},
                                        {0.5f + 0.5f * std::sin(a1), 0.5f + 0.5f * std::cos(a1)}};
            const float capBottom[3][2] = {
                {capTop[0][0], capTop[0][1]}, {capTop[2][0], capTop[2][1]}, {capTop[1][0], capTop[1][1]}};
            if (radiusTop > 0.0f) {
                int c = AddVertex(Add(base, V3(0, height, 0)));
                AddTriangle(c, AddVertex(t0), AddVertex(t1), capTop, 0);
            }
            if (radiusBottom > 0.0f) {
                int c = AddVertex(base);
                AddTriangle(c, AddVertex(b1), AddVertex(b0), capBottom, 0);
            }
        }
    }
}

void ShapeMesh::AddEllipsoid(Vec3 centre, Vec3 radii, int slices, int stacks) {
    int first = static_cast<int>(positions.size());
    for (int j = 0; j <= stacks; j++) {
        float phi = 3.14159265f * j / stacks;  // 0 at the top
        for (int i = 0; i <= slices; i++) {
            float theta = 6.2831853f * i / slices;
            Vec3 p = V3(std::sin(phi) * std::sin(theta) * radii.x, std::cos(phi) * radii.y,
                        std::sin(phi) * std::cos(theta) * radii.z);
            AddVertex(Add(centre, p));
        }
    }
    int row = slices + 1;
    for (int j = 0; j < stacks; j++) {
        for (int i = 0; i < slices; i++) {
            int a = first + j * row + i, b = a + 1, c = a + row + 1, d = a + row;
            float u0 = static_cast<float>(i) / slices, u1 = static_cast<float>(i + 1) / slices;
            float v0 = static_cast<float>(j) / stacks, v1 = static_cast<float>(j + 1) / stacks;
            const float t1[3][2] = {{u0, v0}, {u0, v1}, {u1, v1}};
            const float t2[3][2] = {{u0, v0}, {u1, v1}, {u1, v0}};
            // At the poles one of the two triangles of a cell has collapsed to a line.
            if (j < stacks - 1) {
                AddTriangle(a, d, c, t1, smoothGroup);
            }
            if (j > 0) {
                AddTriangle(a, c, b, t2, smoothGroup);
            }
        }
    }
    // The seam and the poles repeat positions: weld them for normals by sharing indices.
    for (size_t t = 0; t < triangles.size(); t++) {
        for (int k = 0; k < 3; k++) {
            int v = triangles[t].v[k];
            if (v < first) {
                continue;
            }
            int j = (v - first) / row, i = (v - first) % row;
            if (i == slices) {
                triangles[t].v[k] = first + j * row;
            }
            if (j == 0 || j == stacks) {
                triangles[t].v[k] = first + j * row;
            }
        }
    }
}

void ShapeMesh::AddSheet(Vec3 lo, Vec3 hi, int cells, float texScale, bool doubleSided) {
    float dx = (hi.x - lo.x) / cells, dz = (hi.z - lo.z) / cells;
    for (int j = 0; j < cells; j++) {
        for (int i = 0; i < cells; i++) {
            float x0 = lo.x + dx * i, x1 = x0 + dx, z0 = lo.z + dz * j, z1 = z0 + dz;
            Vec3 a = V3(x0, lo.y, z1), b = V3(x1, lo.y, z1), c = V3(x1, lo.y, z0), d = V3(x0, lo.y, z0);
            PlanarQuad(this, a, b, c, d, 0, 2, texScale);
            if (doubleSided) {
                PlanarQuad(this, d, c, b, a, 0, 2, texScale);
            }
        }
    }
}

void ShapeMesh::Append(const ShapeMesh& other) {
    int base = static_cast<int>(positions.size());
    for (size_t i = 0; i < other.positions.size(); i++) {
        positions.push_back(Apply(transform, other.positions[i]));
        bones.push_back(other.bones[i]);
    }
    for (ShapeTriangle t : other.triangles) {
        for (int k = 0; k < 3; k++) {
            t.v[k] += base;
        }
        triangles.push_back(t);
    }
}

void ShapeMesh::Bounds(Vec3* lo, Vec3* hi) const {
    *lo = positions.empty() ? V3(0, 0, 0) : positions[0];
    *hi = *lo;
    for (const Vec3& p : positions) {
        lo->x = std::min(lo->x, p.x);
        lo->y = std::min(lo->y, p.y);
        lo->z = std::min(lo->z, p.z);
        hi->x = std::max(hi->x, p.x);
        hi->y = std::max(hi->y, p.y);
        hi->z = std::max(hi->z, p.z);
    }
}

void ShapeMesh::CornerNormals(std::vector<Vec3>* normals) const {
    std::vector<Vec3> face(triangles.size());
    for (size_t t = 0; t < triangles.size(); t++) {
        const int* v = triangles[t].v;
        // Twice the area times the unit normal: larger triangles weigh more.
        face[t] = Cross(Sub(positions[v[1]], positions[v[0]]), Sub(positions[v[2]], positions[v[0]]));
    }
    // Sum per (position, group) through a list of the triangles touching each position.
    std::vector<std::vector<int>> touching(positions.size());
    for (size_t t = 0; t < triangles.size(); t++) {
        if (triangles[t].smoothGroup != 0) {
            for (int k = 0; k < 3; k++) {
                touching[triangles[t].v[k]].push_back(static_cast<int>(t));
            }
        }
    }
    normals->assign(triangles.size() * 3, V3(0, 1, 0));
    for (size_t t = 0; t < triangles.size(); t++) {
        for (int k = 0; k < 3; k++) {
            Vec3 n = face[t];
            if (triangles[t].smoothGroup != 0) {
                n = V3(0, 0, 0);
                for (int other : touching[triangles[t].v[k]]) {
                    if (triangles[other].smoothGroup == triangles[t].smoothGroup) {
                        n = Add(n, face[other]);
                    }
                }
                if (Length(n) < 1e-6f) {
                    n = face[t];
                }
            }
            (*normals)[t * 3 + k] = Normalise(n);
        }
    }
}
