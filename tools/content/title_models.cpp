#include "title_models.h"

#include <cmath>

#include "atlas.h"
#include "font_raster.h"
#include "keyboard_layout.h"
#include "model_export.h"

// Where the menu draws the keyboard, in eye space.
static const Vec3 kKeyboardPlace = {-0.1f, -1.6f, -19.0f};
// tan(30 degrees): half the 60 degree field of view.
static const float kHalfView = 0.57735027f;

void KeyboardCanvasToModel(float canvasX, float canvasY, float modelZ, float* x, float* y) {
    float depth = -(kKeyboardPlace.z + modelZ);
    *x = (canvasX - 400.0f) / 400.0f * depth * kHalfView * (4.0f / 3.0f) - kKeyboardPlace.x;
    *y = (300.0f - canvasY) / 300.0f * depth * kHalfView - kKeyboardPlace.y;
}

enum { kIvory, kEbony, kCase, kFelt };

static Vec3 CanvasPoint(float cx, float cy, float z) {
    Vec3 p;
    KeyboardCanvasToModel(cx, cy, z, &p.x, &p.y);
    p.z = z;
    return p;
}

// A flat key plate over a canvas rectangle: a 2 x 2 grid of quads, 8 triangles.
static void AddKeyPlate(ShapeMesh* mesh, float x0, float y0, float x1, float y1, float z, int cell) {
    size_t first = mesh->triangles.size();
    for (int j = 0; j < 2; j++) {
        for (int i = 0; i < 2; i++) {
            float ax = x0 + (x1 - x0) * i / 2, bx = x0 + (x1 - x0) * (i + 1) / 2;
            float ay = y0 + (y1 - y0) * j / 2, by = y0 + (y1 - y0) * (j + 1) / 2;
            const float uv[4][2] = {{0.5f * i, -0.5f * (j + 1)},
                                    {0.5f * (i + 1), -0.5f * (j + 1)},
                                    {0.5f * (i + 1), -0.5f * j},
                                    {0.5f * i, -0.5f * j}};
            mesh->AddQuad(CanvasPoint(ax, by, z), CanvasPoint(bx, by, z), CanvasPoint(bx, ay, z),
                          CanvasPoint(ax, ay, z), uv, 0);
        }
    }
    FitToCell(mesh, first, cell);
}

static void Face(ShapeMesh* mesh, Vec3 a, Vec3 b, Vec3 c, Vec3 d, int cell) {
    size_t first = mesh->triangles.size();
    const float uv[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    mesh->AddQuad(a, b, c, d, uv, 0);
    FitToCell(mesh, first, cell);
}

// The case: key bed, back rail, two cheeks, front lip and a felt strip; 39 triangles.
static void AddKeyboardBody(ShapeMesh* mesh) {
    Vec3 lo, hi;  // the keys' extent at bed height
    const float bed = 0.25f, rail = 1.15f;
    lo = CanvasPoint(160, 462, bed);
    hi = CanvasPoint(772, 393, bed);
    float back = hi.y + 0.9f, front = lo.y - 0.35f;
    float left = lo.x - 0.7f, right = hi.x + 0.7f;
    Face(mesh, V3(lo.x, lo.y, bed), V3(hi.x, lo.y, bed), V3(hi.x, hi.y, bed), V3(lo.x, hi.y, bed), kEbony);
    // Back rail: its top and the face toward the keys.
    Face(mesh, V3(lo.x, hi.y, rail), V3(hi.x, hi.y, rail), V3(hi.x, back, rail), V3(lo.x, back, rail), kCase);
    Face(mesh, V3(lo.x, hi.y, 0), V3(hi.x, hi.y, 0), V3(hi.x, hi.y, rail), V3(lo.x, hi.y, rail), kCase);
    // Cheeks: top, inner side, front, outer side.
    for (int side = 0; side < 2; side++) {
        float x0 = side ? hi.x : left, x1 = side ? right : lo.x;
        Face(mesh, V3(x0, front, rail), V3(x1, front, rail), V3(x1, back, rail), V3(x0, back, rail), kCase);
        float inner = side ? x0 : x1, outer = side ? x1 : x0;
        if (side) {
            Face(mesh, V3(inner, back, 0), V3(inner, front, 0), V3(inner, front, rail), V3(inner, back, rail),
                 kCase);
            Face(mesh, V3(outer, front, 0), V3(outer, back, 0), V3(outer, back, rail), V3(outer, front, rail),
                 kCase);
        } else {
            Face(mesh, V3(inner, front, 0), V3(inner, back, 0), V3(inner, back, rail), V3(inner, front, rail),
                 kCase);
            Face(mesh, V3(outer, back, 0), V3(outer, front, 0), V3(outer, front, rail), V3(outer, back, rail),
                 kCase);
        }
        Face(mesh, V3(x0, front, 0), V3(x1, front, 0), V3(x1, front, rail), V3(x0, front, rail), kCase);
    }
    // Front lip under the keys: top and front.
    Face(mesh, V3(lo.x, front, 0.35f), V3(hi.x, front, 0.35f), V3(hi.x, lo.y, 0.35f), V3(lo.x, lo.y, 0.35f),
         kCase);
    Face(mesh, V3(lo.x, front, 0), V3(hi.x, front, 0), V3(hi.x, front, 0.35f), V3(lo.x, front, 0.35f), kCase);
    // The felt along the back of the keys: a zigzag strip of 15 points, 13 triangles.
    size_t first = mesh->triangles.size();
    int points[15];
    for (int i = 0; i < 15; i++) {
        float x = lo.x + (hi.x - lo.x) * (i / 2) / 7.0f;
        points[i] = mesh->AddVertex(V3(x, hi.y - 0.01f, i % 2 ? 0.62f : 0.3f));
    }
    for (int i = 0; i + 2 < 15; i++) {
        const float uv[3][2] = {{0, 0}, {1, 0}, {0, 1}};
        if (i % 2 == 0) {
            mesh->AddTriangle(points[i], points[i + 2], points[i + 1], uv, 0);
        } else {
            mesh->AddTriangle(points[i], points[i + 1], points[i + 2], uv, 0);
        }
    }
    FitToCell(mesh, first, kFelt);
}

ShapeMesh MakeKeyboardMesh() {
    ShapeMesh mesh;
    AddKeyboardBody(&mesh);
    for (int k = 0; k < kPianoKeyCount; k++) {
        const PianoKey* key = PianoKeyForNumber(k);
        if (key->black) {
            float centre = 194.0f + 32.0f * key->whitePosition;
            AddKeyPlate(&mesh, centre - 9.0f, 395, centre + 9.0f, 436, key->restZ, kEbony);
        } else {
            float x0 = 164.0f + 32.0f * key->whitePosition;
            AddKeyPlate(&mesh, x0 - 1.0f, 395, x0 + 29.0f, 460, key->restZ, kIvory);
        }
    }
    return mesh;
}

bool MakeTitleTextMesh(const std::string& fontDirectory, ShapeMesh* mesh, std::string* error) {
    const int w = 256, h = 48;
    Image img(w, h);
    img.Fill(Colour{1, 1, 1, 0});
    TextStyle style = {"DejaVuSans-Bold.ttf", 34, Colour{1, 1, 1, 1},
                       Colour{1, 1, 1, 1},    0,  Colour{0, 0, 0, 1}};
    if (!PaintText(fontDirectory, style, "VANTLE 2", w / 2, 36, &img, error)) {
        return false;
    }
    // Every run of inked pixels along a row becomes one box, 5 pixels deep.
    const float pixel = 0.024f, depth = 5.0f * pixel;
    *mesh = ShapeMesh();
    for (int y = 0; y < h; y++) {
        int x = 0;
        while (x < w) {
            if (img.rgba[(y * w + x) * 4 + 3] < 128) {
                x++;
                continue;
            }
            int end = x;
            while (end < w && img.rgba[(y * w + end) * 4 + 3] >= 128) {
                end++;
            }
            Vec3 lo = V3((x - w / 2) * pixel, (h / 2 - y - 1) * pixel, -depth / 2);
            Vec3 hi = V3((end - w / 2) * pixel, (h / 2 - y) * pixel, depth / 2);
            mesh->AddBox(lo, hi, 1.0f / (96 * pixel));
            x = end;
        }
    }
    if (mesh->triangles.empty()) {
        *error = "the title lettering came out empty";
        return false;
    }
    return true;
}

bool GenerateTitleModels(AssetList* list, const std::string& fontDirectory, std::string* error) {
    ShapeMesh keyboard = MakeKeyboardMesh();
    ShapeMesh title;
    if (!MakeTitleTextMesh(fontDirectory, &title, error)) {
        return false;
    }
    std::vector<uint8_t> keys = ShapeMeshFile(keyboard, 0), letters = ShapeMeshFile(title, 0);
    if (keys.empty() || letters.empty()) {
        *error = "the title models do not fit the format";
        return false;
    }
    list->Add("logo\\keyboard.vmd", CONTENT_BASE_PACKAGE, std::move(keys));
    list->Add("logo\\3d.vmd", CONTENT_BASE_PACKAGE, std::move(letters));
    const AtlasCell cells[4] = {{Rgb(244, 240, 226), 0.15f, 0.0f},
                                {Rgb(22, 20, 22), 0.2f, 0.0f},
                                {Rgb(70, 28, 16), 0.7f, 0.3f},
                                {Rgb(150, 20, 30), 0.8f, 0.0f}};
    list->Add("logo\\keyboard.tga", CONTENT_BASE_PACKAGE, EncodeTga(MakeAtlas(cells, 4, 61u)));
    return true;
}
