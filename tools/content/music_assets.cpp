#include "music_assets.h"

#include <fstream>
#include <sstream>

#include "music_render.h"
#include "music_score.h"
#include "audio/ogg_encoder.h"
#include "synth.h"
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
};

static const Piece kPieces[3] = {{"menu.txt", "sound\\music_menu.ogg"},
                                 {"level.txt", "sound\\music_level.ogg"},
                                 {"win.txt", "sound\\music_win.ogg"}};

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
        bool menu = &piece == &kPieces[0];
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
        std::vector<short> pcm = ToPcm16(samples);
        std::vector<unsigned char> ogg;
        if (!EncodeOggVorbis(pcm.data(), static_cast<unsigned int>(pcm.size() / 2), 2, kMusicRate, 0.3f, ogg)) {
            *error = std::string(piece.resource) + ": the Vorbis encoder refused its settings";
            return false;
        }
        list->Add(piece.resource, CONTENT_BASE_PACKAGE, std::move(ogg));
    }
    return true;
}
