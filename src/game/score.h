// Score, high score and the air tally. The score text batch shows the high
// score in entry 0 and the score in entry 1; a level start writes "Score:",
// points scored afterwards write "score:", and the HUD keeps that difference.
#pragma once

// Adds points, raises the high score with them and refreshes the score text.
void AddScore(unsigned int points);
// Refreshes the score text with the "score:" spelling of the rules.
void ShowScores();
// The level start's spelling of the two lines.
void ShowLevelStartScores();
// One tick of the tally after the finish: 10 points and, every fourth tick, the falling blip.
void TallyStep();
