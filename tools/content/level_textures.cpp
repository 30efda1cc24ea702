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
    // The second world: a frozen garden at night.
    Add(list, "textures\\02\\snow.tga", MakeStone(256, Rgb(225, 230, 240), 7, 201u));
    Add(list, "textures\\02\\ice.tga", MakeMetal(128, Rgb(170, 205, 230), 202u));
    Add(list, "textures\\02\\frost_stone.tga", MakeStone(256, Rgb(150, 160, 175), 5, 203u));
    Add(list, "textures\\02\\frost_bricks.tga", MakeBricks(256, Rgb(110, 120, 150), Rgb(225, 230, 240), 204u));
    Add(list, "textures\\02\\frost_wood.tga", MakeWood(128, Rgb(100, 90, 85), 4, 205u));
    Add(list, "textures\\02\\frost_rock.tga", MakeRock(256, Rgb(120, 128, 145), 206u));
    Add(list, "textures\\02\\pine.tga", MakeFoliage(128, Rgb(70, 120, 90), Rgb(20, 50, 40), 140, 207u));
    Add(list, "textures\\02\\night_sky.tga", MakeClouds(256, 208u));
}
