// The player character's physics, run once per tick by the game update: the
// key table and the joystick become walking, back-stepping, turning and the
// jump (with the assist that steers a running jump away from a deep drop);
// gravity and integration; the two contact passes against the level's solid
// pieces and the objects' boxes; and the three-state animation that also
// poses the lamp. All speeds are per 20 ms tick; velocity y counts downward.
#pragma once

struct SysJoystickState;

// Where the rules read the joystick; the platform's reader, replaced by replays and tests.
extern int (*g_readJoystick)(SysJoystickState* out);
// The stick as the last joystick read saw it: its direction in degrees and its x and y after
// the dead zone and scaling (0 while no stick answers). The debug panel shows them.
extern float g_joystickAngle;
extern float g_joystickX;
extern float g_joystickY;

// Steps 1 to 7 of the player's tick: state reset, joystick, walk, jump, flame, footsteps, turn.
void ReadPlayerInput();
// Steps 8 to 10: integration, the box follows, ground flags cleared.
void MovePlayer();
// The solid pieces: walls, ceilings, floors, conveyors, the finish and deadly falls. 1 ends the tick.
int CollidePlayerWithPieces();
// The objects' boxes: platforms, collapsing platforms, doors, keys and deadly things. 1 ends the tick.
int CollidePlayerWithObjects();
// Simulates a running jump from start along yaw; where it lands, or start when it never does.
void JumpProbe(const float* start, float yaw, float* landing);
// Advances one "player" object's animation by its state and poses its model and the lamp.
void AnimatePlayer(class GameObject* object);
// The player's collision shape, or null.
class CollisionShape* PlayerShape();
// A solid piece's box (frame 0's bounds); 0 for pieces that are not solid or have no geometry.
int SolidPieceBox(const struct LocationPiece* piece, const float** min, const float** max);
// The two textures with their own rules.
extern const char kPlatformTexture[];
extern const char kConveyorTexture[];
