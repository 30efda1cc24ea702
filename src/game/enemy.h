// Enemies walk closed routes of waypoint entities named "<enemy>_route00",
// "_route01", ... at 1.9 units per tick on each axis that still differs,
// face where they go, loop their model's frames and kill on touch.
#pragma once

class GameObject;

// One tick of an enemy: a step along its route, then its animation.
void UpdateEnemy(int slot);
// The yaw that faces from p to t, taken in the x-y plane.
float Heading(const float* p, const float* t);
