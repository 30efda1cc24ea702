#include "rig.h"

#include <cstddef>

Pose RestPose() {
    Pose p;
    for (int i = 0; i < kRigMaxBones; i++) {
        p.angles[i] = V3(0, 0, 0);
        p.offsets[i] = V3(0, 0, 0);
    }
    return p;
}

void PoseTransforms(const std::vector<Bone>& bones, const Pose& pose, std::vector<Transform>* out) {
    out->assign(bones.size(), Identity());
    for (size_t i = 0; i < bones.size() && i < static_cast<size_t>(kRigMaxBones); i++) {
        const Bone& b = bones[i];
        Vec3 a = pose.angles[i];
        Transform turn = Compose(RotationY(a.y), Compose(RotationX(a.x), RotationZ(a.z)));
        Transform local = Compose(Translation(Add(b.pivot, pose.offsets[i])),
                                  Compose(turn, Translation(Scale(b.pivot, -1.0f))));
        (*out)[i] = b.parent >= 0 ? Compose((*out)[b.parent], local) : local;
    }
}

std::vector<Vec3> PosePositions(const ShapeMesh& mesh, const std::vector<Bone>& bones, const Pose& pose) {
    std::vector<Transform> world;
    PoseTransforms(bones, pose, &world);
    std::vector<Vec3> out(mesh.positions.size());
    for (size_t i = 0; i < mesh.positions.size(); i++) {
        int b = mesh.bones[i];
        out[i] = b >= 0 && b < static_cast<int>(world.size()) ? Apply(world[b], mesh.positions[i])
                                                              : mesh.positions[i];
    }
    return out;
}

Vec3 PosePoint(const std::vector<Bone>& bones, const Pose& pose, int bone, Vec3 rest) {
    std::vector<Transform> world;
    PoseTransforms(bones, pose, &world);
    return Apply(world[bone], rest);
}
