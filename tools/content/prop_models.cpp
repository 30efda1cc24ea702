#include "prop_models.h"

#include <cmath>

#include "materials.h"
#include "model_export.h"
#include "noise.h"
#include "paint.h"

static const float kTau = 6.2831853f;

ShapeMesh MakeFootMesh() {
    ShapeMesh mesh;
    // Sole and instep, then five toes along the front, then the leg rising out of sight.
    mesh.AddEllipsoid(V3(0, 20, 6), V3(36, 20, 62), 16, 10);
    mesh.AddEllipsoid(V3(0, 34, -18), V3(30, 26, 34), 12, 8);
    static const float kToes[5][3] = {{-22, 7, 9}, {-10, 8, 10}, {1, 8.5f, 11}, {12, 8, 10}, {23, 7, 9}};
    for (int i = 0; i < 5; i++) {
        float r = kToes[i][2];
        mesh.AddEllipsoid(
            V3(kToes[i][0] * 1.1f, r, 62 + (i == 2 ? 4.0f : 0.0f) - std::fabs(kToes[i][0]) * 0.3f),
            V3(r * 0.85f, r, r * 1.1f), 8, 6);
    }
    mesh.AddCylinder(V3(0, 30, -22), 27, 31, 400, 16, true, 1.0f / 64.0f);
    // The ellipsoids' own 0..1 coordinates would stretch the skin: project from the side instead.
    for (ShapeTriangle& t : mesh.triangles) {
        for (int k = 0; k < 3; k++) {
            const Vec3& p = mesh.positions[t.v[k]];
            t.uv[k][0] = (p.z + p.x * 0.5f) / 64.0f;
            t.uv[k][1] = p.y / 64.0f;
        }
    }
    return mesh;
}

ShapeMesh MakeNettleMesh() {
    ShapeMesh mesh;
    // Seven stinging stalks, each with pointed leaves, inside a 30 x 30 footprint.
    static const float kStalks[7][3] = {{0, 0, 22}, {-9, -6, 17}, {9, -7, 18}, {-8, 8, 16},
                                        {8, 9, 19}, {-12, 1, 13}, {12, 2, 14}};
    for (int i = 0; i < 7; i++) {
        float x = kStalks[i][0], z = kStalks[i][1], h = kStalks[i][2];
        mesh.AddCylinder(V3(x, 0, z), 1.3f, 0.0f, h, 6, false, 1.0f / 16.0f);
        for (int leaf = 0; leaf < 3; leaf++) {
            float a = 120.0f * leaf + 37.0f * i;
            float y = h * (0.3f + 0.2f * leaf);
            mesh.transform =
                Compose(Translation(V3(x, y, z)), Compose(RotationY(a), RotationX(70.0f - 10.0f * leaf)));
            mesh.AddCylinder(V3(0, 0, 0), 2.2f, 0.0f, 7.0f - leaf, 4, true, 1.0f / 16.0f);
            mesh.transform = Identity();
        }
    }
    return mesh;
}

ShapeMesh MakeKeyMesh() {
    ShapeMesh mesh;
    const float t = 1.0f / 16.0f;
    // The bow: a ring of short bars around (0, 17).
    for (int i = 0; i < 10; i++) {
        float a = 360.0f * i / 10.0f;
        mesh.transform = Compose(Translation(V3(0, 17, 0)), RotationZ(a));
        mesh.AddBox(V3(-1.6f, 4.2f, -1.2f), V3(1.6f, 6.4f, 1.2f), t);
    }
    mesh.transform = Identity();
    mesh.AddBox(V3(-1.1f, 2, -1.1f), V3(1.1f, 11.4f, 1.1f), t);
    mesh.AddBox(V3(1.1f, 2, -0.9f), V3(5.0f, 4.2f, 0.9f), t);
    mesh.AddBox(V3(1.1f, 5.5f, -0.9f), V3(3.8f, 7.2f, 0.9f), t);
    mesh.AddCylinder(V3(0, 0, 0), 2.0f, 1.2f, 2.2f, 8, true, t);
    return mesh;
}

ShapeMesh MakeDoorMesh() {
    ShapeMesh mesh;
    const float t = 1.0f / 64.0f;
    // A heavy plank door with iron bands; it stands on y = 0, 64 wide and 76 tall.
    mesh.AddBox(V3(-32, 0, -5), V3(32, 76, 5), t);
    for (int i = 0; i < 3; i++) {
        float y = 10.0f + 26.0f * i;
        mesh.AddBox(V3(-32.5f, y, -6), V3(32.5f, y + 4.5f, 6), t);
    }
    for (int side = -1; side <= 1; side += 2) {
        mesh.transform = Translation(V3(14.0f * side, 38, 6));
        mesh.AddEllipsoid(V3(0, 0, 0), V3(2.2f, 2.2f, 1.2f), 6, 4);
    }
    mesh.transform = Identity();
    return mesh;
}

ShapeMesh MakePlatformMesh() {
    ShapeMesh mesh;
    const float t = 1.0f / 64.0f;
    mesh.AddBox(V3(-32, -6, -32), V3(32, 0, 32), t);
    mesh.AddBox(V3(-27, -10, -27), V3(27, -6, 27), t);
    return mesh;
}

ShapeMesh MakeCollapseMesh() {
    ShapeMesh mesh;
    const float t = 1.0f / 64.0f;
    const int tiles = 4;
    const float size = 64.0f / tiles;
    std::vector<int> firstVertex;
    for (int j = 0; j < tiles; j++) {
        for (int i = 0; i < tiles; i++) {
            firstVertex.push_back(static_cast<int>(mesh.positions.size()));
            float x0 = -32 + size * i, z0 = -32 + size * j;
            mesh.AddBox(V3(x0 + 0.3f, -7, z0 + 0.3f), V3(x0 + size - 0.3f, 0, z0 + size - 0.3f), t);
        }
    }
    firstVertex.push_back(static_cast<int>(mesh.positions.size()));
    std::vector<Vec3> rest = mesh.positions;
    for (int f = 1; f < kCollapseFrames; f++) {
        std::vector<Vec3> frame = rest;
        for (int tile = 0; tile < tiles * tiles; tile++) {
            // Cracks open first, then tiles let go one after another and tumble.
            float start = 1.0f + 5.0f * Hash01(tile, 0, 77u);
            float k = std::max(0.0f, f - start);
            float drop = 1.2f * k * k + 0.6f * f;
            float spin = 14.0f * k * (Hash01(tile, 1, 77u) - 0.5f) * 2.0f;
            int i = tile % tiles, j = tile / tiles;
            Vec3 centre = V3(-32 + size * (i + 0.5f), -3.5f, -32 + size * (j + 0.5f));
            Vec3 spread = Scale(V3(centre.x, 0, centre.z), 0.012f * f);
            Transform move = Compose(
                Translation(Add(Add(centre, spread), V3(0, -drop, 0))),
                Compose(RotationX(spin), Compose(RotationZ(spin * 0.7f), Translation(Scale(centre, -1.0f)))));
            for (int v = firstVertex[tile]; v < firstVertex[tile + 1]; v++) {
                frame[v] = Apply(move, rest[v]);
            }
        }
        mesh.frames.push_back(frame);
    }
    return mesh;
}

// Skin for the giant foot: warm, blotchy, with fine creases.
static Image FootSkin() {
    Image img(128, 128);
    for (int y = 0; y < 128; y++) {
        for (int x = 0; x < 128; x++) {
            float n = Fbm(x / 16.0f, y / 16.0f, 8, 4, 5u);
            float crease = 0.5f + 0.5f * std::sin(y * kTau / 9.0f + 3.0f * n);
            float k = 0.85f + 0.3f * n - 0.08f * crease * crease;
            img.Set(x, y, Colour{0.93f * k, 0.72f * k, 0.6f * k, 1.0f});
        }
    }
    return img;
}

// Nettle leaves: deep green with lighter veins and darker serrations.
static Image NettleGreen() {
    Image img(64, 64);
    for (int y = 0; y < 64; y++) {
        for (int x = 0; x < 64; x++) {
            float n = Fbm(x / 8.0f, y / 8.0f, 8, 3, 9u);
            float vein = std::fabs(std::sin((x + y * 0.5f) * kTau / 16.0f));
            float k = 0.7f + 0.4f * n + (vein > 0.96f ? 0.25f : 0.0f);
            img.Set(x, y, Colour{0.18f * k, 0.45f * k, 0.12f * k, 1.0f});
        }
    }
    return img;
}

static Image DoorPicture() {
    Image img = MakeWood(128, Rgb(120, 78, 40), 4, 21u);
    // Rotate the planks upright: a door's boards run vertically.
    Image upright(128, 128);
    for (int y = 0; y < 128; y++) {
        for (int x = 0; x < 128; x++) {
            upright.Set(x, y, img.Get(y, x));
        }
    }
    return upright;
}

static bool AddModel(AssetList* list, const char* name, const ShapeMesh& mesh, std::string* error) {
    std::vector<uint8_t> bytes = ShapeMeshFile(mesh, 0);
    if (bytes.empty()) {
        *error = std::string(name) + ": the model does not fit the format";
        return false;
    }
    list->Add(name, CONTENT_BASE_PACKAGE, std::move(bytes));
    return true;
}

bool GenerateProps(AssetList* list, std::string* error) {
    if (!AddModel(list, "foot.vmd", MakeFootMesh(), error) ||
        !AddModel(list, "spikes.vmd", MakeNettleMesh(), error) ||
        !AddModel(list, "keys.vmd", MakeKeyMesh(), error) ||
        !AddModel(list, "door.vmd", MakeDoorMesh(), error) ||
        !AddModel(list, "platform.vmd", MakePlatformMesh(), error) ||
        !AddModel(list, "platform_collapse.vmd", MakeCollapseMesh(), error)) {
        return false;
    }
    list->Add("foot.tga", CONTENT_BASE_PACKAGE, EncodeTga(FootSkin()));
    list->Add("nettle.tga", CONTENT_BASE_PACKAGE, EncodeTga(NettleGreen()));
    list->Add("key_czone.tga", CONTENT_BASE_PACKAGE, EncodeTga(MakeMetal(64, Rgb(230, 180, 50), 31u)));
    list->Add("door.tga", CONTENT_BASE_PACKAGE, EncodeTga(DoorPicture()));
    list->Add("textures\\01\\platform.tga", CONTENT_BASE_PACKAGE,
              EncodeTga(MakeStone(128, Rgb(150, 140, 125), 3, 41u)));
    list->Add("textures\\01\\conveyer.tga", CONTENT_BASE_PACKAGE, EncodeTga(MakeBelt(128, 43u)));
    return true;
}
