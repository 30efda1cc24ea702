#include "game/score.h"

#include "app/scene_camera.h"
#include "game/game_sounds.h"
#include "game/game_state.h"
#include "ui/text_batch.h"

void ShowScores() {
    g_scoreText.SetTextF(0, "High-score:%05i", static_cast<int>(highScore));
    g_scoreText.SetTextF(1, "score:%05i", static_cast<int>(score));
    g_scoreText.Build();
}

void ShowLevelStartScores() {
    g_scoreText.SetTextF(0, "High-score:%05i", static_cast<int>(highScore));
    g_scoreText.SetTextF(1, "Score:%05i", static_cast<int>(score));
    g_scoreText.Build();
}

void AddScore(unsigned int points) {
    score += points;
    if (score > highScore) {
        highScore = score;
    }
    ShowScores();
}

void TallyStep() {
    AddScore(10);
    if (tallyCountdown == 0) {
        tallyCountdown = 3;
        const float at[3] = {g_camera.position.x, g_camera.position.y, g_camera.position.z};
        PlayGameSoundAt(SoundBlip, at, air * 0.02f + 0.2f);
    } else {
        tallyCountdown -= 1;
    }
}
