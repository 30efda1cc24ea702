#include "level_textures.h"

#include "image.h"
#include "materials.h"

static void Add(AssetList* list, const char* name, const Image& img) {
    list->Add(name, CONTENT_BASE_PACKAGE, EncodeTga(img));
}

void GenerateLevelTextures(AssetList* list) {
    Add(list, "textures\\01\\grass.tga", MakeGrass(256, 101u));
    Add(list, "textures\\01\\dirt.tga", MakeDirt(128, 102u));
    Add(list, "textures\\01\\stone.tga", MakeStone(256, Rgb(140, 138, 130), 5, 103u));
    Add(list, "textures\\01\\flagstones.tga", MakeStone(256, Rgb(170, 150, 120), 3, 104u));
    Add(list, "textures\\01\\bricks.tga", MakeBricks(256, Rgb(160, 72, 50), Rgb(190, 180, 160), 105u));
    Add(list, "textures\\01\\wood.tga", MakeWood(128, Rgb(130, 88, 48), 4, 106u));
    Add(list, "textures\\01\\bark.tga", MakeBark(128, Rgb(96, 70, 48), 107u));
    Add(list, "textures\\01\\metal.tga", MakeMetal(128, Rgb(120, 128, 136), 108u));
    Add(list, "textures\\01\\rock.tga", MakeRock(256, Rgb(120, 110, 100), 109u));
    Add(list, "textures\\01\\sky.tga", MakeClouds(256, 110u));
    Add(list, "textures\\01\\cloth.tga", MakeCloth(128, Rgb(150, 30, 40), 111u));
    Add(list, "textures\\01\\canvas.tga", MakeCloth(128, Rgb(210, 200, 170), 112u));
    Add(list, "textures\\01\\leaves.tga", MakeFoliage(128, Rgb(120, 190, 70), Rgb(40, 100, 30), 90, 113u));
    Add(list, "textures\\01\\hedge.tga", MakeFoliage(128, Rgb(80, 150, 60), Rgb(20, 70, 25), 140, 114u));
    Add(list, "textures\\01\\flowers.tga", MakeFoliage(64, Rgb(240, 200, 80), Rgb(200, 70, 120), 40, 115u));
    Add(list, "textures\\01\\roof.tga", MakeWood(128, Rgb(150, 60, 40), 8, 116u));
    // Backdrops: skies mapped once from the horizon up, bands of distant hills over
    // transparency and far water, all tiling around a level (see docs/levels.md).
    SkyLook day = {Rgb(52, 104, 196),
                   Rgb(178, 210, 240),
                   Rgb(255, 255, 255),
                   Rgb(176, 186, 206),
                   0.45f,
                   0.0f,
                   0,
                   0,
                   0,
                   0};
    Add(list, "textures\\01\\day_sky.tga", MakeSky(512, day, 120u));
    SkyLook dusk = {
        Rgb(40, 46, 110), Rgb(250, 170, 110), Rgb(255, 214, 170), Rgb(130, 80, 120), 0.5f, 0.55f, 0, 0, 0, 0};
    Add(list, "textures\\01\\dusk_sky.tga", MakeSky(512, dusk, 121u));
    SkyLook storm = {
        Rgb(24, 24, 38), Rgb(120, 70, 60), Rgb(240, 150, 90), Rgb(36, 36, 52), 0.95f, 1.0f, 0, 0, 0, 0};
    Add(list, "textures\\01\\storm_sky.tga", MakeSky(512, storm, 122u));
    Add(list, "textures\\01\\hills.tga", MakeHills(256, Rgb(60, 110, 50), Rgb(150, 180, 215), false, 123u));
    Add(list, "textures\\01\\far_sea.tga", MakeFarWater(256, Rgb(24, 70, 110), Rgb(170, 205, 235), 124u));
    Add(list, "textures\\01\\dusk_sea.tga", MakeFarWater(256, Rgb(36, 44, 86), Rgb(236, 168, 132), 126u));
    Add(list, "textures\\01\\storm_sea.tga", MakeFarWater(256, Rgb(14, 22, 34), Rgb(120, 80, 70), 125u));
    // The second world: a frozen garden at night.
    Image frostStone = MakeStone(256, Rgb(150, 160, 175), 5, 203u);
    AddFrost(&frostStone, 0.45f, 213u);
    Image frostBricks = MakeBricks(256, Rgb(110, 120, 150), Rgb(225, 230, 240), 204u);
    AddFrost(&frostBricks, 0.3f, 214u);
    Image frostWood = MakeWood(128, Rgb(100, 90, 85), 4, 205u);
    AddFrost(&frostWood, 0.35f, 215u);
    Image frostRock = MakeRock(256, Rgb(120, 128, 145), 206u);
    AddFrost(&frostRock, 0.5f, 216u);
    Add(list, "textures\\02\\snow.tga", MakeSnow(256, 201u));
    Add(list, "textures\\02\\ice.tga", MakeIce(256, 202u));
    Add(list, "textures\\02\\frost_stone.tga", frostStone);
    Add(list, "textures\\02\\frost_bricks.tga", frostBricks);
    Add(list, "textures\\02\\frost_wood.tga", frostWood);
    Add(list, "textures\\02\\frost_rock.tga", frostRock);
    Add(list, "textures\\02\\pine.tga", MakePine(128, 207u));
    SkyLook night = {
        Rgb(6, 10, 30), Rgb(40, 62, 110), Rgb(120, 136, 170), Rgb(30, 40, 70), 0.3f, 0.0f, 90, 0.3f, 0.85f,
        0.025f};
    Add(list, "textures\\02\\night_sky.tga", MakeSky(512, night, 208u));
    Add(list, "textures\\02\\snow_hills.tga", MakeHills(256, Rgb(40, 60, 90), Rgb(60, 80, 130), true, 209u));
    Add(list, "textures\\02\\far_ice.tga", MakeFarWater(256, Rgb(30, 50, 86), Rgb(110, 140, 190), 210u));
}
