// Geometry as the content tools build it, before it becomes an engine model:
// indexed positions (second component up), triangles with a texture coordinate
// and a smoothing group per corner, an optional bone per position for posed
// frames, and extra frames of positions. Shapes are appended through a current
// transform, so a part is modelled at the origin and placed where it belongs.
//
// Corner normals are worked out from frame 0 when the mesh is exported: a
// triangle in smoothing group 0 is flat; in any other group each corner takes
// the area-weighted average of the triangles of its group that share the
// position, so rounded parts shade smoothly and boxes keep crisp edges.
#pragma once

#include <cstdint>
#include <vector>

struct Vec3 {
    float x, y, z;
};

Vec3 V3(float x, float y, float z);
Vec3 Add(Vec3 a, Vec3 b);
Vec3 Sub(Vec3 a, Vec3 b);
Vec3 Scale(Vec3 a, float s);
Vec3 Cross(Vec3 a, Vec3 b);
float Dot(Vec3 a, Vec3 b);
float Length(Vec3 a);
Vec3 Normalise(Vec3 a);

// An affine transform: p' = m * p + t (3 x 3 matrix m, rows first).
struct Transform {
    float m[9];
    Vec3 t;
};

Transform Identity();
Transform Translation(Vec3 t);
Transform Scaling(Vec3 s);
// Rotation by degrees about the x, y or z axis (right-handed).
Transform RotationX(float degrees);
Transform RotationY(float degrees);
Transform RotationZ(float degrees);
// a after b: Compose(a, b) applied to p is a(b(p)).
Transform Compose(const Transform& a, const Transform& b);
Vec3 Apply(const Transform& tr, Vec3 p);
// The matrix part only (for directions).
Vec3 ApplyDirection(const Transform& tr, Vec3 d);

struct ShapeTriangle {
    int v[3];         // position indices
    float uv[3][2];   // texture coordinate of each corner
    int smoothGroup;  // 0 flat, else corners average with the same group
};

class ShapeMesh {
public:
    std::vector<Vec3> positions;
    std::vector<int> bones;  // bone of each position (0 when not rigged)
    std::vector<ShapeTriangle> triangles;
    std::vector<std::vector<Vec3>> frames;  // frames 1.. (frame 0 is positions)
    Transform transform;                    // applied to every shape added
    int bone;                               // bone given to positions added
    int smoothGroup;                        // group given to smooth shapes (flat shapes use 0)

    ShapeMesh();

    // Adds a position through the current transform; returns its index.
    int AddVertex(Vec3 p);
    // Adds a triangle over three indices with its corner texture coordinates.
    void AddTriangle(int a, int b, int c, const float uv[3][2], int group);
    // Adds a quad a-b-c-d (counter-clockwise seen from its front) as two triangles.
    void AddQuad(Vec3 a, Vec3 b, Vec3 c, Vec3 d, const float uv[4][2], int group);

    // An axis-aligned box (before the transform) with flat faces; texture coordinates
    // are world units times texScale, projected along each face's axis.
    void AddBox(Vec3 lo, Vec3 hi, float texScale);
    // A box whose top face leans: its top is at hiY at x = lo.x and rises or falls
    // linearly to topAtHiX at x = hi.x (a ramp when bottom and top differ).
    void AddWedge(Vec3 lo, Vec3 hi, float topAtHiX, float texScale);
    // A vertical cylinder (or cone when the radii differ) standing on base, smooth sides,
    // flat caps; u runs around once per `sides`, v along the height.
    void AddCylinder(Vec3 base, float radiusBottom, float radiusTop, float height, int sides, bool caps,
                     float texScale);
    // An ellipsoid around centre with the given radii, smooth.
    void AddEllipsoid(Vec3 centre, Vec3 radii, int slices, int stacks);
    // A flat grid of cells x cells squares in the x-z plane at lo.y, facing up (and down
    // too when doubleSided), for foliage cards and floors.
    void AddSheet(Vec3 lo, Vec3 hi, int cells, float texScale, bool doubleSided);

    // Appends another mesh (its positions through the current transform).
    void Append(const ShapeMesh& other);

    // Frame 0 bounds.
    void Bounds(Vec3* lo, Vec3* hi) const;
    // Three unit corner normals per triangle, from frame 0 as described above.
    void CornerNormals(std::vector<Vec3>* normals) const;
};
