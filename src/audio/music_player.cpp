#include "audio/music_player.h"

#include <AL/alc.h>

#include "audio/music_stream.h"

MusicPlayer::MusicPlayer() : current(0), transition(kFade), resources(nullptr) {
    streams[0] = streams[1] = nullptr;
    gain[0] = gain[1] = 0;
    pitch[0] = pitch[1] = 1.0f;
    changing[0] = changing[1] = 0;
}

MusicPlayer::~MusicPlayer() {
    DestroyStream(0);
    DestroyStream(1);
}

void MusicPlayer::DestroyStream(int slot) {
    delete streams[slot];
    streams[slot] = nullptr;
}

int MusicPlayer::PlayMusic(const char* name) {
    // Without an OpenAL context there is nothing to play into.
    if (!resources || !name || !alcGetCurrentContext()) {
        return 0;
    }
    current = 1 - current;
    gain[current] = 1.0f;
    pitch[current] = 1.0f;
    // A stream made while no device was open (StopMusic with no sound) has no source:
    // remake it now that there is one, or the music would never be heard.
    if (streams[current] && !streams[current]->alSource) {
        DestroyStream(current);
    }
    if (!streams[current]) {
        streams[current] = new MusicStream();
    } else {
        streams[current]->Close();
    }
    MusicStream* stream = streams[current];
    if (!stream->Open(resources, name)) {
        // Hand the turn back, so the piece still playing stays the current one:
        // otherwise a second failed call would pick its slot and close it.
        current = 1 - current;
        return 0;
    }
    if (transition == kCut && streams[1 - current]) {
        streams[1 - current]->Close();
    }
    if (transition == kFade) {
        gain[current] = 0;
    } else if (transition == kSlide) {
        pitch[current] = 0;
    }
    changing[0] = changing[1] = 1;
    stream->SetGain(gain[current]);
    stream->SetPitch(pitch[current]);
    return stream->Play(0.0);
}

void MusicPlayer::StopMusic() {
    current = 1 - current;
    if (!streams[current]) {
        streams[current] = new MusicStream();
    } else {
        streams[current]->Close();
    }
    if (transition == kFade) {
        gain[current] = 0;
    } else if (transition == kSlide) {
        pitch[current] = 0;
    }
    changing[0] = changing[1] = 1;
}

void MusicPlayer::StepTransition(int slot) {
    bool leaving = static_cast<unsigned int>(slot) != current;
    if (transition == kCut) {
        if (leaving) {
            DestroyStream(slot);
        }
        return;
    }
    // 0.005 is not exact in binary: 200 float steps land a hair short of 1.0
    // (or above 0.0), which would stretch a four-second fade by a tick. Half
    // a step of slack makes the 200th step the last.
    const float slack = kStep * 0.5f;
    float* value = transition == kFade ? &gain[slot] : &pitch[slot];
    if (leaving) {
        *value -= kStep;
        if (*value <= slack) {
            DestroyStream(slot);
            changing[slot] = 0;
            return;
        }
    } else {
        *value += kStep;
        if (*value >= 1.0f - slack) {
            changing[slot] = 0;
            *value = 1.0f;
        }
    }
    if (transition == kFade) {
        streams[slot]->SetGain(*value);
    } else {
        streams[slot]->SetPitch(*value);
    }
}

void MusicPlayer::Update() {
    for (int i = 0; i < 2; i++) {
        MusicStream* stream = streams[i];
        if (!stream || !stream->IsPlaying()) {
            continue;
        }
        // A stall long enough to play out both buffers stops the source; once
        // it has fresh buffers again it must be started by hand.
        if (stream->Refill() && !stream->SourcePlaying()) {
            stream->Play(-1.0);
        }
        if (changing[i]) {
            StepTransition(i);
        }
    }
}
