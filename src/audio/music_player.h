// Background music. The player holds two streams and alternates between
// them: each new piece starts in the slot the old one is not in, so the old
// piece can leave by the selected transition while the new one arrives —
// cut at once, cross-fade of gain, or a slide of pitch, 0.005 per tick either
// way (200 ticks, four seconds, for a full fade). StopMusic is a transition to
// an empty slot. Update runs once per 20 ms tick: it keeps every playing
// stream fed, restarts a source that ran dry while the game stalled, and
// steps the transition. Music always loops.
#pragma once

class MusicStream;
class ResourceManager;

class MusicPlayer {
public:
    static constexpr unsigned int kCut = 0;
    static constexpr unsigned int kFade = 1;
    static constexpr unsigned int kSlide = 2;
    static constexpr float kStep = 0.005f;

    unsigned int current;     // slot (0 or 1) of the piece wanted now
    unsigned int transition;  // kCut, kFade or kSlide
    MusicStream* streams[2];  // owned; null when empty
    float gain[2];
    float pitch[2];
    unsigned char changing[2];   // the slot is taking part in a transition
    ResourceManager* resources;  // where music is found; nothing plays while null

    MusicPlayer();
    // Destroys both streams.
    ~MusicPlayer();

    // Starts the named Ogg file in the other slot, taking over by the transition; 1 on success
    // (0 for a missing or broken file, which leaves the old piece playing).
    int PlayMusic(const char* name);
    // Lets the current piece end by the transition.
    void StopMusic();
    // One 20 ms tick: refills the streams and steps the transition.
    void Update();

private:
    // Deletes slot's stream and empties the slot.
    void DestroyStream(int slot);
    // Moves slot one step through the running transition.
    void StepTransition(int slot);
};

extern MusicPlayer g_music;
