#include "level_compiler.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "level_checks.h"
#include "model_export.h"
#include "music_assets.h"
#include "platform/sys_files.h"
#include "resources/location.h"

static Transform TurnAbout(Vec3 centre, float degrees) {
    return Compose(Translation(centre), Compose(RotationY(degrees), Translation(Scale(centre, -1.0f))));
}

// A ramp inside its box: a wedge whose top climbs from a 1-unit lip to the full
// height in the rise direction, built along +x about the origin and turned.
static void AddRamp(ShapeMesh* mesh, const LevelShape& s, float texScale) {
    Vec3 lo = V3(s.v[0], s.v[1], s.v[2]), hi = V3(s.v[3], s.v[4], s.v[5]);
    Vec3 centre = Scale(Add(lo, hi), 0.5f);
    bool alongZ = s.rise >= 2;
    float hx = (alongZ ? hi.z - lo.z : hi.x - lo.x) * 0.5f;
    float hz = (alongZ ? hi.x - lo.x : hi.z - lo.z) * 0.5f;
    static const float kAngle[4] = {0.0f, 180.0f, -90.0f, 90.0f};
    float lip = std::min(1.0f, (hi.y - lo.y) * 0.5f);
    Transform keep = mesh->transform;
    mesh->transform = Compose(Translation(V3(centre.x, 0, centre.z)), RotationY(kAngle[s.rise] + s.turn));
    mesh->AddWedge(V3(-hx, lo.y, -hz), V3(hx, lo.y + lip, hz), hi.y, texScale);
    mesh->transform = keep;
}

// A backdrop seen from within: each triangle turned to face the axis, and its picture
// flipped both ways so that it reads upright and the right way round from inside.
static void TurnInside(ShapeMesh* mesh, size_t first) {
    for (size_t i = first; i < mesh->triangles.size(); i++) {
        ShapeTriangle& tri = mesh->triangles[i];
        std::swap(tri.v[1], tri.v[2]);
        for (int a = 0; a < 2; a++) {
            std::swap(tri.uv[1][a], tri.uv[2][a]);
        }
        for (int k = 0; k < 3; k++) {
            tri.uv[k][0] = -tri.uv[k][0];
            tri.uv[k][1] = -tri.uv[k][1];
        }
    }
}

static void AddCard(ShapeMesh* mesh, const LevelShape& s) {
    float x = s.v[0], y = s.v[1], z = s.v[2], h = s.v[3] * 0.5f, top = s.v[1] + s.v[4];
    for (int turn = 0; turn < 2; turn++) {
        Vec3 a = turn ? V3(x, y, z - h) : V3(x - h, y, z);
        Vec3 b = turn ? V3(x, y, z + h) : V3(x + h, y, z);
        Vec3 c = V3(b.x, top, b.z), d = V3(a.x, top, a.z);
        const float uv[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        const float back[4][2] = {{1, 0}, {0, 0}, {0, 1}, {1, 1}};
        mesh->AddQuad(a, b, c, d, uv, 0);
        mesh->AddQuad(b, a, d, c, back, 0);
    }
}

ShapeMesh PieceMesh(const LevelPiece& piece) {
    ShapeMesh mesh;
    float t = 1.0f / piece.scale;
    for (const LevelShape& s : piece.shapes) {
        Vec3 lo = V3(s.v[0], s.v[1], s.v[2]), hi = V3(s.v[3], s.v[4], s.v[5]);
        size_t first = mesh.triangles.size();
        switch (s.kind) {
            case kShapeBox:
                mesh.transform = TurnAbout(Scale(Add(lo, hi), 0.5f), s.turn);
                mesh.AddBox(lo, hi, t);
                break;
            case kShapeRamp:
                AddRamp(&mesh, s, t);
                break;
            case kShapeCylinder:
                mesh.transform = TurnAbout(lo, s.turn);
                mesh.AddCylinder(lo, s.v[3], s.v[5], s.v[4], s.sides, !s.inside, t);
                if (s.inside) {
                    TurnInside(&mesh, first);
                }
                break;
            case kShapeBlob: {
                mesh.transform = TurnAbout(lo, s.turn);
                mesh.AddEllipsoid(lo, V3(s.v[3], s.v[4], s.v[5]), 14, 9);
                // Around and over the blob in world units, like every other shape.
                float around = 6.2831853f * std::max(s.v[3], s.v[5]) * t, over = 3.14159265f * s.v[4] * t;
                for (size_t i = first; i < mesh.triangles.size(); i++) {
                    for (int k = 0; k < 3; k++) {
                        mesh.triangles[i].uv[k][0] *= around;
                        mesh.triangles[i].uv[k][1] *= -over;
                    }
                }
                break;
            }
            case kShapeSheet: {
                Vec3 a = V3(s.v[0], s.v[1], s.v[2]), b = V3(s.v[3], s.v[1], s.v[4]);
                mesh.transform = TurnAbout(Scale(Add(a, b), 0.5f), s.turn);
                mesh.AddSheet(a, b, s.sides, t, true);
                break;
            }
            case kShapeCard:
                mesh.transform = TurnAbout(lo, s.turn);
                AddCard(&mesh, s);
                break;
        }
        mesh.transform = Identity();
    }
    return mesh;
}

static bool Fail(const LevelSource& source, int line, const std::string& message, std::string* error) {
    *error = source.file + ":" + std::to_string(line) + ": " + message;
    return false;
}

bool BuildLocation(const LevelSource& source, const AssetList* known, bool bake, Location* location,
                   std::string* error) {
    location->Clear();
    location->lightmaps.Clear();
    strncpy(location->name, source.name.c_str(), sizeof(location->name) - 1);
    for (const LevelPiece& piece : source.pieces) {
        if (known && !known->Find(piece.texture)) {
            return Fail(source, piece.line,
                        "texture '" + piece.texture + "' is not made by the content build", error);
        }
        std::unique_ptr<LocationPiece> out(new LocationPiece());
        memset(out->name, 0, sizeof(out->name));
        memset(out->textureName, 0, sizeof(out->textureName));
        strncpy(out->name, piece.name.c_str(), sizeof(out->name) - 1);
        strncpy(out->textureName, piece.texture.c_str(), sizeof(out->textureName) - 1);
        if (!ExportModel(PieceMesh(piece), piece.flags, &out->model)) {
            return Fail(source, piece.line, "piece '" + piece.name + "' has too many vertices", error);
        }
        out->model.BuildFrame(0, 0, 0.0f);
        location->pieces[location->pieceCount++] = out.release();
    }
    for (const LevelEntity& entity : source.entities) {
        LocationEntity* out = new LocationEntity();
        strncpy(out->name, entity.name.c_str(), sizeof(out->name) - 1);
        memcpy(out->position, entity.position, sizeof(out->position));
        memcpy(out->rotation, entity.rotation, sizeof(out->rotation));
        out->params = static_cast<char*>(calloc(entity.params.size() + 1, 1));
        memcpy(out->params, entity.params.data(), entity.params.size());
        location->entities[location->entityCount++] = out;
    }
    if (bake) {
        location->RebuildLighting(nullptr, nullptr);
    }
    return true;
}

bool CompileLevel(const LevelSource& source, const AssetList* known, bool bake, std::vector<uint8_t>* bytes,
                  std::string* error) {
    std::unique_ptr<Location> location(new Location());
    if (!BuildLocation(source, known, bake, location.get(), error)) {
        return false;
    }
    bytes->assign(location->Size(), 0);
    location->Serialise(bytes->data());
    return true;
}

static int CollectName(const char* name, void* context) {
    static_cast<std::vector<std::string>*>(context)->push_back(name);
    return 1;
}

bool GenerateLevels(AssetList* list, const std::string& contentDirectory, bool bake, std::string* error) {
    static const char* const kFolders[2] = {"levels", "logo"};
    for (const char* folder : kFolders) {
        std::string directory = contentDirectory + "/" + folder;
        std::vector<std::string> names;
        Sys_ListFiles(directory.c_str(), ".lvl", CollectName, &names);
        // The directory's own order varies between file systems; the packages must not.
        std::sort(names.begin(), names.end());
        for (const std::string& name : names) {
            std::string path = directory + "/" + name, text;
            if (!ReadTextFile(path, &text)) {
                *error = path + ": cannot read";
                return false;
            }
            LevelSource source;
            std::vector<uint8_t> bytes;
            if (!ParseLevelSource(text, path, &source, error) ||
                !CompileLevel(source, list, bake, &bytes, error)) {
                return false;
            }
            // The levels the game plays in turn must be playable; title and closing scenes need not.
            if (strcmp(folder, "levels") == 0 && IsNumberedLevel(name) &&
                !CheckPlayableLevel(source, error)) {
                return false;
            }
            std::string resource = std::string(folder) + "\\" + name.substr(0, name.size() - 4) + ".vlc";
            list->Add(resource, CONTENT_LEVELS_PACKAGE, std::move(bytes));
        }
    }
    return true;
}
