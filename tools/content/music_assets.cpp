#include "music_assets.h"

#include <fstream>
#include <sstream>

#include "music_render.h"
#include "music_score.h"
#include "ogg_encoder.h"
#include "piano_roll.h"

bool ReadTextFile(const std::string& path, std::string* text) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return false;
    }
    std::ostringstream s;
    s << in.rdbuf();
    *text = s.str();
    return true;
}

struct Piece {
    const char* score;     // file under content/music
    const char* resource;  // name the game plays
    uint32_t serial;       // fixed Ogg serial number
};

static const Piece kPieces[3] = {{"menu.txt", "sound\\music_menu.ogg", 0x564D0001u},
                                 {"level.txt", "sound\\music_level.ogg", 0x564D0002u},
                                 {"win.txt", "sound\\music_win.ogg", 0x564D0003u}};

bool GenerateMusic(AssetList* list, const std::string& contentDirectory, std::string* error) {
    for (const Piece& piece : kPieces) {
        std::string path = contentDirectory + "/music/" + piece.score;
        std::string text;
        if (!ReadTextFile(path, &text)) {
            *error = path + ": cannot read";
            return false;
        }
        Score score;
        if (!ParseScore(text, path, &score, error)) {
            return false;
        }
        bool menu = piece.serial == kPieces[0].serial;
        if (menu) {
            if (score.length != kMenuLoopTicks) {
                *error = path + ": the title music must last " + std::to_string(kMenuLoopTicks) + " ticks";
                return false;
            }
            std::vector<PianoRollEvent> events;
            if (!MakePianoRoll(score, kPianoRollStartTick, &events, error)) {
                *error = path + ": " + *error;
                return false;
            }
            list->Add("piano.vpr", CONTENT_BASE_PACKAGE, EncodePianoRoll(events));
        }
        std::vector<float> samples = RenderScore(score, kMusicRate);
        std::vector<uint8_t> ogg = EncodeOggVorbis(samples, 2, kMusicRate, piece.serial, 0.3f);
        if (ogg.empty()) {
            *error = std::string(piece.resource) + ": the Vorbis encoder refused its settings";
            return false;
        }
        list->Add(piece.resource, CONTENT_BASE_PACKAGE, std::move(ogg));
    }
    return true;
}
