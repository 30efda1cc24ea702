// The data directory the build made: every name the game asks for resolves
// through the resource lookup. (The build's content step fills VANTLE_RUN_DIR/data.)
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "piano_roll.h"
#include "resources/flare_list.h"
#include "resources/location.h"
#include "resources/model.h"
#include "resources/resource_manager.h"
#include "resources/tga_image.h"

static std::vector<unsigned char> OpenData(const char* name) {
    static ResourceManager* manager = nullptr;
    if (!manager) {
        manager = new ResourceManager();
        snprintf(manager->dataDirectory, sizeof(manager->dataDirectory), "%s/data", VANTLE_RUN_DIR);
    }
    unsigned char* bytes = manager->Open(name);
    if (!bytes) {
        return {};
    }
    return std::vector<unsigned char>(bytes, bytes + manager->bufferSize);
}

// Every picture and model the interface, effects, title and objects ask for, and the list the
// title's flares name.
TEST(ContentData, EveryNameTheGameAsksForResolvesAndLoads) {
    std::istringstream names(
        "gui_font.tga gui_font2.tga gui_font3.tga gui_loading.tga gui_lighting.tga gui\\level_bar.tga "
        "gui\\air_bar_full.tga gui\\air_bar_empty.tga gui\\air.tga gui\\lives.tga gui_logo.tga "
        "gui_controls.tga delver_light.tga particle_fire.tga particle_sparkle.tga particle_gibs.tga "
        "particle_star.tga particle_blood.tga particle_smoke.tga particle_leaf.tga logo\\logotext_main.tga "
        "logo\\logotext_starring.tga logo\\logotext_start.tga logo\\logotext_3d.tga delver.tga foot.tga "
        "nettle.tga key_czone.tga door.tga textures\\01\\platform.tga textures\\01\\conveyer.tga "
        "logo\\keyboard.tga delver.vmd light.vmd logo\\delver.vmd foot.vmd spikes.vmd keys.vmd door.vmd "
        "platform.vmd platform_collapse.vmd logo\\keyboard.vmd logo\\3d.vmd");
    for (std::string name; names >> name;) {
        std::vector<unsigned char> bytes = OpenData(name.c_str());
        ASSERT_FALSE(bytes.empty()) << name << " is not in " << VANTLE_RUN_DIR << "/data";
        if (name.size() > 4 && name.compare(name.size() - 4, 4, ".tga") == 0) {
            TgaImage img;  // read as the game reads it
            EXPECT_EQ(TgaDecode(bytes.data(), static_cast<unsigned int>(bytes.size()), &img), 1) << name;
            TgaFree(&img);
        } else {
            Model model;
            EXPECT_EQ(model.Parse(bytes.data(), static_cast<unsigned int>(bytes.size())), bytes.size()) << name;
        }
    }
    // Names are found whatever their case, as the game may spell them.
    EXPECT_FALSE(OpenData("GUI\\LIVES.TGA").empty());
    EXPECT_TRUE(OpenData("gui\\no_such_picture.tga").empty());
    std::vector<unsigned char> roll = OpenData("piano.vpr");
    std::vector<PianoRollEvent> events;
    EXPECT_TRUE(DecodePianoRoll(roll.data(), roll.size(), &events));
    std::vector<unsigned char> vfl = OpenData("test.vfl");
    FlareList flares;
    ASSERT_EQ(flares.Parse(vfl.data(), static_cast<unsigned int>(vfl.size())), 1);
    for (unsigned int i = 0; i < flares.count; i++) {
        EXPECT_FALSE(OpenData(flares.elements[i]->name).empty()) << flares.elements[i]->name;
    }
}

static std::unique_ptr<Location> LoadLocation(const char* name) {
    std::unique_ptr<Location> loc(new Location());
    std::vector<unsigned char> bytes = OpenData(name);
    EXPECT_FALSE(bytes.empty()) << name;
    if (bytes.empty() || loc->Parse(bytes.data(), static_cast<unsigned int>(bytes.size())) == 0) {
        ADD_FAILURE() << name << " does not load";
        loc->Clear();
    }
    return loc;
}

static bool HasEntity(const Location& loc, const char* prefix) {
    for (int i = 0; i < loc.entityCount; i++) {
        if (strncmp(loc.entities[i]->name, prefix, strlen(prefix)) == 0) {
            return true;
        }
    }
    return false;
}

TEST(ContentData, EveryLocationNamesOnlyThingsTheDataHolds) {
    const char* names[] = {"logo\\logo.vlc", "levels\\done.vlc", "levels\\end.vlc", "levels\\01.vlc",
                           "levels\\02.vlc"};
    for (const char* name : names) {
        std::unique_ptr<Location> loc = LoadLocation(name);
        ASSERT_GT(loc->pieceCount, 0) << name;
        // Baked: pages exist and every piece drawn with a lightmap has its coordinates.
        EXPECT_GT(loc->lightmaps.pageCount, 0u) << name;
        for (int i = 0; i < loc->pieceCount; i++) {
            const LocationPiece* piece = loc->pieces[i];
            EXPECT_FALSE(OpenData(piece->textureName).empty()) << name << ": " << piece->textureName;
            if (!(piece->model.modelFlag & 0x14)) {
                EXPECT_NE(loc->lightmaps.coords[i], nullptr) << name << ": piece " << piece->name;
            }
        }
        // Every enemy's own model and picture exist, and so does its first route point.
        for (int i = 0; i < loc->entityCount; i++) {
            const char* e = loc->entities[i]->name;
            if (strncmp(e, "enemy", 5) == 0 && !strstr(e, "_route")) {
                std::string model = std::string(e) + ".vmd", picture = std::string(e) + ".tga";
                EXPECT_FALSE(OpenData(model.c_str()).empty()) << model;
                EXPECT_FALSE(OpenData(picture.c_str()).empty()) << picture;
                EXPECT_TRUE(HasEntity(*loc, (std::string(e) + "_route00").c_str())) << e;
            }
        }
    }
}

// The pieces and entities the title and closing scenes are driven by, by name. (The levels'
// own are the level checks' and the solution replays'.)
TEST(ContentData, ScenesHoldWhatTheGameLooksFor) {
    struct Case {
        const char* location;
        const char* pieces;
        const char* entities;
    } cases[] = {
        {"logo\\logo.vlc", "clouds plant1 plant2 plant3 plant4 plant5 plant6 bushes tree_leaves tree_trunk",
         "smoke light"},
        {"levels\\done.vlc", "", "player_dance"},
        {"levels\\end.vlc", "", "foot player_prop"},
    };
    for (const Case& c : cases) {
        std::unique_ptr<Location> loc = LoadLocation(c.location);
        std::istringstream pieces(c.pieces), entities(c.entities);
        for (std::string piece; pieces >> piece;) {
            bool found = false;
            for (int i = 0; i < loc->pieceCount; i++) {
                found = found || piece == loc->pieces[i]->name;
            }
            EXPECT_TRUE(found) << c.location << " lacks piece " << piece;
        }
        for (std::string entity; entities >> entity;) {
            EXPECT_TRUE(HasEntity(*loc, entity.c_str())) << c.location << " lacks " << entity;
        }
    }
}
