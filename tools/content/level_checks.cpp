#include "level_checks.h"

#include <strings.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "level_compiler.h"

bool IsNumberedLevel(const std::string& fileName) {
    size_t dot = fileName.rfind(".lvl");
    if (dot == std::string::npos || dot == 0 || dot + 4 != fileName.size()) {
        return false;
    }
    for (size_t i = 0; i < dot; i++) {
        if (fileName[i] < '0' || fileName[i] > '9') {
            return false;
        }
    }
    return true;
}

static bool Fail(const LevelSource& source, int line, const std::string& message, std::string* error) {
    *error = source.file + ":" + std::to_string(line) + ": " + message;
    return false;
}

// The distance from the vertical axis to the nearest point of a rectangle on the ground plane.
static float NearestToAxis(float x0, float z0, float x1, float z1) {
    float x = std::max(x0, std::min(0.0f, x1));
    float z = std::max(z0, std::min(0.0f, z1));
    return std::sqrt(x * x + z * z);
}

static std::string Units(float d) {
    char text[32];
    snprintf(text, sizeof(text), "%.0f", d);
    return text;
}

// Each shape on its own: a piece may reach far out (a sea bed under the whole
// level) as long as no part of it lies entirely out of sight.
static bool CheckPieceInSight(const LevelSource& source, const LevelPiece& piece, std::string* error) {
    for (const LevelShape& shape : piece.shapes) {
        LevelPiece one = piece;
        one.shapes.assign(1, shape);
        ShapeMesh mesh = PieceMesh(one);
        if (mesh.positions.empty()) {
            continue;
        }
        float lo[2] = {1e30f, 1e30f}, hi[2] = {-1e30f, -1e30f};
        for (const Vec3& p : mesh.positions) {
            lo[0] = std::min(lo[0], p.x);
            hi[0] = std::max(hi[0], p.x);
            lo[1] = std::min(lo[1], p.z);
            hi[1] = std::max(hi[1], p.z);
        }
        float d = NearestToAxis(lo[0], lo[1], hi[0], hi[1]);
        if (d > kCameraDistance) {
            return Fail(source, shape.line,
                        "piece '" + piece.name + "' is built " + Units(d) +
                            " units from the axis, beyond the camera at " + Units(kCameraDistance),
                        error);
        }
    }
    return true;
}

bool CheckPlayableLevel(const LevelSource& source, std::string* error) {
    bool player = false, finish = false;
    for (const LevelEntity& e : source.entities) {
        player = player || e.name == "player";
        float d = std::sqrt(e.position[0] * e.position[0] + e.position[2] * e.position[2]);
        if (d > kCameraDistance) {
            return Fail(source, e.line,
                        "entity '" + e.name + "' stands " + Units(d) +
                            " units from the axis, beyond the camera at " + Units(kCameraDistance),
                        error);
        }
    }
    for (const LevelPiece& p : source.pieces) {
        // Only solid pieces are touched, so a finish that is not solid can never be reached.
        finish = finish || (strcasecmp(p.name.c_str(), "finish") == 0 && (p.flags & kPieceSolid));
        if (!CheckPieceInSight(source, p, error)) {
            return false;
        }
    }
    if (!player) {
        return Fail(source, 1, "the level has no entity named player", error);
    }
    if (!finish) {
        return Fail(source, 1, "the level has no solid piece named finish", error);
    }
    return true;
}
