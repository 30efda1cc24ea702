#include "app/random.h"

static unsigned int s_randState = 1;

int Rand() {
    s_randState = s_randState * 214013u + 2531011u;
    return static_cast<int>((s_randState >> 16) & 0x7FFF);
}

void ResetRand() {
    s_randState = 1;
}

unsigned int RandState() {
    return s_randState;
}

void SetRandState(unsigned int state) {
    s_randState = state;
}
