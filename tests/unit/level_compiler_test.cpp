// Level sources and the level compiler: what a designer writes becomes the
// pieces, flags, entities and parameter text of a location the engine reads
// back, and every mistake is reported with its file and line.
#include "level_compiler.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "asset_list.h"
#include "level_source.h"
#include "resources/location.h"
#include "resources/mesh.h"

static std::string ErrorOf(const std::string& text) {
    LevelSource source;
    std::string error;
    EXPECT_FALSE(ParseLevelSource(text, "test.lvl", &source, &error)) << text;
    return error;
}

TEST(LevelSource, ErrorsNameTheFileAndLine) {
    struct Case {
        const char* text;
        const char* start;  // expected beginning of the message
    } cases[] = {
        {"location A\npiece p t.tga\n    box 0 0 0 1 1\n", "test.lvl:3: box needs 6 numbers"},
        {"location A\npiece p t.tga\n    box 0 0 0 1 x 1\n", "test.lvl:3: 'x' is not a number"},
        {"location A\npiece p t.tga\n    box 0 0 0 -1 1 1\n", "test.lvl:3: box: each second"},
        {"location A\npiece p t.tga shiny\n    box 0 0 0 1 1 1\n", "test.lvl:2: unknown piece flag 'shiny'"},
        {"location A\n\npiece p t.tga\nentity player 0 0 0\n", "test.lvl:3: piece 'p' has no shapes"},
        {"location A\npiece p t.tga\n", "test.lvl:2: piece 'p' has no shapes"},
        {"location A\n    box 0 0 0 1 1 1\n", "test.lvl:2: an indented line belongs"},
        {"location A\nentity light 0 0 0\n    color 1\n", "test.lvl:3: an entity parameter line"},
        {"location A\nentity abcdefghijklmnopqrstu 0 0 0\n", "test.lvl:2: entity name"},
        {"location A\nentity e 0 0 0 spin 4\n", "test.lvl:2: after the position"},
        {"location A\npiece p t.tga\n    ramp 0 0 0 1 1 1 rise up\n", "test.lvl:3: ramp rises"},
        {"location A\npiece p t.tga\n    cylinder 0 0 0 radius 4\n", "test.lvl:3: cylinder needs"},
        {"location A\npiece p t.tga\n    cone 0 0 0\n", "test.lvl:3: unknown shape 'cone'"},
        {"location A\nwall 1 2 3\n", "test.lvl:2: unknown keyword 'wall'"},
        {"# nothing but a comment\npiece p t.tga\n    box 0 0 0 1 1 1\n", "test.lvl:1: the file has no"},
    };
    for (const Case& c : cases) {
        std::string error = ErrorOf(c.text);
        EXPECT_EQ(error.rfind(c.start, 0), 0u) << "got: " << error;
    }
}

TEST(LevelCompiler, LocationReadsBackWithPiecesFlagsEntitiesAndBakedLight) {
    const char* text =
        "location Yard\n"
        "piece floor textures\\01\\grass.tga scale 32 solid\n"
        "    box -100 -10 -100  100 0 100\n"
        "piece post textures\\01\\grass.tga castsnoshadow\n"
        "    box -5 0 -5  5 40 5\n"
        "entity light01 0 60 0\n"
        "    color = 1, 1, 1\n"
        "    dist = 300\n"
        "entity player 10 0 20 turn 45\n";
    LevelSource source;
    std::string error;
    ASSERT_TRUE(ParseLevelSource(text, "yard.lvl", &source, &error)) << error;
    AssetList known;
    known.Add("textures\\01\\grass.tga", CONTENT_BASE_PACKAGE, {1});
    std::vector<uint8_t> bytes;
    ASSERT_TRUE(CompileLevel(source, &known, true, &bytes, &error)) << error;

    std::unique_ptr<Location> loc(new Location());
    ASSERT_GT(loc->Parse(bytes.data(), static_cast<unsigned int>(bytes.size())), 0u);
    EXPECT_STREQ(loc->name, "Yard");
    ASSERT_EQ(loc->pieceCount, 2);
    EXPECT_STREQ(loc->pieces[0]->name, "floor");
    EXPECT_STREQ(loc->pieces[0]->textureName, "textures\\01\\grass.tga");
    EXPECT_EQ(loc->pieces[0]->model.modelFlag, kPieceSolid);
    EXPECT_EQ(loc->pieces[1]->model.modelFlag, kPieceCastsNoShadow);
    const Mesh* floor = loc->pieces[0]->model.frames[0];
    EXPECT_FLOAT_EQ(floor->boundsMin[1], -10.0f);
    EXPECT_FLOAT_EQ(floor->boundsMax[0], 100.0f);
    // Texture coordinates run in world units over the scale: 200 units at 32 per repeat.
    float uMin = 1e9f, uMax = -1e9f;
    for (int i = 0; i < floor->texCoordCount; i++) {
        uMin = std::min(uMin, floor->texCoords[i * 3]);
        uMax = std::max(uMax, floor->texCoords[i * 3]);
    }
    EXPECT_NEAR(uMax - uMin, 200.0f / 32.0f, 1e-4f);
    ASSERT_EQ(loc->entityCount, 2);
    EXPECT_STREQ(loc->entities[0]->params, "color = 1, 1, 1\r\ndist = 300");
    EXPECT_FLOAT_EQ(loc->entities[1]->position[2], 20.0f);
    EXPECT_FLOAT_EQ(loc->entities[1]->rotation[1], 45.0f);
    // Baked: both pieces have lightmap coordinates, and the floor under the light is lit.
    EXPECT_GT(loc->lightmaps.pageCount, 0u);
    ASSERT_NE(loc->lightmaps.coords[0], nullptr);
    EXPECT_EQ(loc->lightmaps.coordCounts[0], floor->faceCount * 3u);
    unsigned int brightest = 0;
    for (int i = 0; i < LightmapSet::kPageBytes; i++) {
        brightest = std::max<unsigned int>(brightest, loc->lightmaps.pages[0][i]);
    }
    EXPECT_GT(brightest, 150u);

    // A texture the build does not make is refused on the piece's line.
    std::vector<uint8_t> plain;
    source.pieces[1].texture = "textures\\01\\grasss.tga";
    EXPECT_FALSE(CompileLevel(source, &known, false, &plain, &error));
    EXPECT_EQ(error.rfind("yard.lvl:4: texture 'textures\\01\\grasss.tga'", 0), 0u) << error;
}

TEST(LevelCompiler, ShapesHaveTheirExtentsAndRampsRiseTheRightWay) {
    LevelPiece piece;
    piece.scale = 64.0f;
    piece.flags = 0;
    piece.line = 1;
    LevelShape ramp;
    memset(&ramp, 0, sizeof(ramp));
    ramp.kind = kShapeRamp;
    float box[6] = {0, 0, 0, 40, 20, 10};
    memcpy(ramp.v, box, sizeof(box));
    for (int rise = 0; rise < 4; rise++) {
        ramp.rise = rise;
        piece.shapes.assign(1, ramp);
        ShapeMesh mesh = PieceMesh(piece);
        Vec3 lo, hi;
        mesh.Bounds(&lo, &hi);
        EXPECT_NEAR(lo.x, 0.0f, 1e-3f);
        EXPECT_NEAR(hi.x, 40.0f, 1e-3f);
        EXPECT_NEAR(hi.z, 10.0f, 1e-3f);
        EXPECT_NEAR(hi.y, 20.0f, 1e-3f);
        // The highest point lies at the end the ramp rises toward.
        Vec3 top = mesh.positions[0];
        for (const Vec3& p : mesh.positions) {
            if (p.y > top.y + 1e-3f) {
                top = p;
            }
        }
        float along[4] = {top.x, -top.x + 40, top.z, -top.z + 10};
        float full[4] = {40, 40, 10, 10};
        EXPECT_NEAR(along[rise], full[rise], 1e-3f) << "rise " << rise;
    }
    LevelShape cyl;
    memset(&cyl, 0, sizeof(cyl));
    cyl.kind = kShapeCylinder;
    float c[6] = {5, 1, -5, 3, 10, 3};
    memcpy(cyl.v, c, sizeof(c));
    cyl.sides = 16;
    piece.shapes.assign(1, cyl);
    ShapeMesh mesh = PieceMesh(piece);
    Vec3 lo, hi;
    mesh.Bounds(&lo, &hi);
    EXPECT_NEAR(lo.y, 1.0f, 1e-4f);
    EXPECT_NEAR(hi.y, 11.0f, 1e-4f);
    EXPECT_NEAR(hi.x, 8.0f, 1e-3f);
    EXPECT_NEAR(lo.z, -8.0f, 1e-3f);
}
