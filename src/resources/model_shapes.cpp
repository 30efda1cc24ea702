#include "resources/model_shapes.h"

#include "resources/mesh.h"
#include "resources/model.h"

// Writes triangle i with corners a, b, c (vertex indices), a flat normal and texture
// coordinates taken from the two axes that are not the normal's.
static void SetTriangle(Mesh& mesh, int i, int a, int b, int c, const float normal[3]) {
    unsigned short* face = mesh.faces + i * 3;
    face[0] = static_cast<unsigned short>(a);
    face[1] = static_cast<unsigned short>(b);
    face[2] = static_cast<unsigned short>(c);
    unsigned short* texFace = mesh.texFaces + i * 3;
    texFace[0] = face[0];
    texFace[1] = face[1];
    texFace[2] = face[2];
    for (int k = 0; k < 4; k++) {
        for (int axis = 0; axis < 3; axis++) {
            mesh.faceNormals[i * 12 + k * 3 + axis] = normal[axis];
        }
    }
}

static void FinishModel(Model& model, Mesh* mesh) {
    mesh->ComputeBounds();
    model.frames[0] = mesh;
    model.frameCount = 1;
    model.BuildFrame(0, 0, 0.0f);
}

int MakeBoxModel(Model& model, const float boundsMin[3], const float boundsMax[3], float texScale) {
    model.Clear();
    Mesh* mesh = new Mesh;
    // Each face has its own four corners so texture coordinates need not be shared.
    mesh->Allocate(24, 12, 24, 12);
    // Face: normal axis, sign, then the two in-plane axes in counter-clockwise order.
    static const int kFaces[6][4] = {{0, 1, 1, 2},  {0, -1, 2, 1}, {1, 1, 2, 0},
                                     {1, -1, 0, 2}, {2, 1, 0, 1},  {2, -1, 1, 0}};
    for (int f = 0; f < 6; f++) {
        int axis = kFaces[f][0], sign = kFaces[f][1], s = kFaces[f][2], t = kFaces[f][3];
        float normal[3] = {0.0f, 0.0f, 0.0f};
        normal[axis] = static_cast<float>(sign);
        for (int corner = 0; corner < 4; corner++) {
            float* v = mesh->vertices + (f * 4 + corner) * 3;
            int highS = corner == 1 || corner == 2;
            int highT = corner >= 2;
            v[axis] = sign > 0 ? boundsMax[axis] : boundsMin[axis];
            v[s] = highS ? boundsMax[s] : boundsMin[s];
            v[t] = highT ? boundsMax[t] : boundsMin[t];
            float* uv = mesh->texCoords + (f * 4 + corner) * 3;
            uv[0] = v[s] * texScale;
            uv[1] = v[t] * texScale;
        }
        SetTriangle(*mesh, f * 2, f * 4, f * 4 + 1, f * 4 + 2, normal);
        SetTriangle(*mesh, f * 2 + 1, f * 4, f * 4 + 2, f * 4 + 3, normal);
    }
    FinishModel(model, mesh);
    return 1;
}

int MakeGridModel(Model& model, float x, float y, float z, float cellSize, int cells, float texScale) {
    model.Clear();
    int side = cells + 1;
    if (cells < 1 || side * side > 65535 || cells * cells * 2 > 65535) {
        return 0;
    }
    Mesh* mesh = new Mesh;
    mesh->Allocate(static_cast<unsigned short>(side * side), static_cast<unsigned short>(cells * cells * 2),
                   static_cast<unsigned short>(side * side), static_cast<unsigned short>(cells * cells * 2));
    for (int row = 0; row < side; row++) {
        for (int column = 0; column < side; column++) {
            float* v = mesh->vertices + (row * side + column) * 3;
            v[0] = x + column * cellSize;
            v[1] = y;
            v[2] = z + row * cellSize;
            float* uv = mesh->texCoords + (row * side + column) * 3;
            uv[0] = v[0] * texScale;
            uv[1] = v[2] * texScale;
        }
    }
    static const float kUp[3] = {0.0f, 1.0f, 0.0f};
    int triangle = 0;
    for (int row = 0; row < cells; row++) {
        for (int column = 0; column < cells; column++) {
            int a = row * side + column, b = a + 1, c = a + side, d = c + 1;
            // Seen from above (+y) with x right and z towards the viewer, a c d b turns
            // counter-clockwise, so the normal faces up.
            SetTriangle(*mesh, triangle++, a, c, d, kUp);
            SetTriangle(*mesh, triangle++, a, d, b, kUp);
        }
    }
    FinishModel(model, mesh);
    return 1;
}
