// Posing a mesh by bones, for the animated models. Every position of a
// ShapeMesh names the bone it moves with; a bone turns about its pivot and
// carries its children with it. A pose gives each bone three angles (degrees,
// applied about z, then x, then y) and an offset; posing writes one frame of
// positions. Bones are listed parents first.
#pragma once

#include <vector>

#include "shape_mesh.h"

enum { kRigMaxBones = 24 };

struct Bone {
    int parent;  // -1 for the root
    Vec3 pivot;  // rest position of the joint
};

struct Pose {
    Vec3 angles[kRigMaxBones];
    Vec3 offsets[kRigMaxBones];
};

// A pose with every angle and offset zero (the rest pose).
Pose RestPose();
// The world transform of every bone in a pose.
void PoseTransforms(const std::vector<Bone>& bones, const Pose& pose, std::vector<Transform>* out);
// The mesh's frame-0 positions moved into a pose.
std::vector<Vec3> PosePositions(const ShapeMesh& mesh, const std::vector<Bone>& bones, const Pose& pose);
// Where a point fixed to a bone (given in rest coordinates) lies in a pose.
Vec3 PosePoint(const std::vector<Bone>& bones, const Pose& pose, int bone, Vec3 rest);
