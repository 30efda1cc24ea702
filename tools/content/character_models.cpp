#include "character_models.h"

#include <cmath>
#include <cstdio>

#include "atlas.h"
#include "model_export.h"
#include "rig.h"

static const float kTau = 6.2831853f;

// Atlas cells of the delver's texture.
enum { kSkin, kTunic, kHood, kBoots, kMetal, kGlass, kEyes, kBelt, kTrousers };

// Delver bones, parents first. The character faces +z; its left is +x.
enum {
    kHips,
    kChest,
    kHead,
    kLeftUpperArm,
    kLeftForearm,
    kRightUpperArm,
    kRightForearm,
    kLeftThigh,
    kLeftShin,
    kRightThigh,
    kRightShin,
    kLamp,
    kDelverBones
};

static std::vector<Bone> DelverBones() {
    std::vector<Bone> b(kDelverBones);
    b[kHips] = Bone{-1, V3(0, 16, 0)};
    b[kChest] = Bone{kHips, V3(0, 18, 0)};
    b[kHead] = Bone{kChest, V3(0, 28.5f, 0)};
    b[kLeftUpperArm] = Bone{kChest, V3(6.6f, 27, 0)};
    b[kLeftForearm] = Bone{kLeftUpperArm, V3(7.1f, 21, 0)};
    b[kRightUpperArm] = Bone{kChest, V3(-6.6f, 27, 0)};
    b[kRightForearm] = Bone{kRightUpperArm, V3(-7.1f, 21, 0)};
    b[kLeftThigh] = Bone{kHips, V3(2.8f, 16, 0)};
    b[kLeftShin] = Bone{kLeftThigh, V3(2.8f, 9, 0)};
    b[kRightThigh] = Bone{kHips, V3(-2.8f, 16, 0)};
    b[kRightShin] = Bone{kRightThigh, V3(-2.8f, 9, 0)};
    b[kLamp] = Bone{kRightForearm, V3(-7.4f, 14.2f, 0.6f)};
    return b;
}

// Where the lamp's glass sits in the rest pose (the glow is centred on it).
static const Vec3 kLampCentre = {-7.4f, 8.6f, 0.6f};

// Runs an add-shape step with a bone and an atlas cell.
#define PART(bone_, cell_, add)                \
    do {                                       \
        mesh.bone = (bone_);                   \
        size_t first_ = mesh.triangles.size(); \
        add;                                   \
        FitToCell(&mesh, first_, (cell_));     \
    } while (0)

static ShapeMesh DelverRest() {
    ShapeMesh mesh;
    PART(kHips, kTrousers, mesh.AddEllipsoid(V3(0, 16.2f, 0), V3(5, 3.2f, 3.6f), 10, 6));
    PART(kHips, kBelt, mesh.AddCylinder(V3(0, 16.6f, 0), 5.3f, 5.4f, 1.6f, 12, false, 0.2f));
    PART(kChest, kTunic, mesh.AddEllipsoid(V3(0, 22.6f, 0), V3(6, 6.6f, 4.3f), 12, 8));
    PART(kHead, kSkin, mesh.AddEllipsoid(V3(0, 32.6f, 0.2f), V3(5.1f, 5.5f, 5), 12, 8));
    PART(kHead, kSkin, mesh.AddEllipsoid(V3(0, 31.8f, 5.1f), V3(1, 1.1f, 0.9f), 6, 4));
    PART(kHead, kEyes, mesh.AddEllipsoid(V3(1.9f, 33.3f, 4.4f), V3(0.85f, 1.2f, 0.6f), 6, 4));
    PART(kHead, kEyes, mesh.AddEllipsoid(V3(-1.9f, 33.3f, 4.4f), V3(0.85f, 1.2f, 0.6f), 6, 4));
    // The hood: a rim and a cone leaning back.
    PART(kHead, kHood, mesh.AddCylinder(V3(0, 34.6f, -0.3f), 5.5f, 5.4f, 1.6f, 12, false, 0.2f));
    mesh.transform = Compose(Translation(V3(0, 36.0f, -0.4f)), RotationX(-22));
    PART(kHead, kHood, mesh.AddCylinder(V3(0, 0, 0), 5.4f, 0.0f, 8.5f, 12, true, 0.2f));
    mesh.transform = Identity();
    for (int side = -1; side <= 1; side += 2) {
        float s = static_cast<float>(side);
        int upper = side > 0 ? kLeftUpperArm : kRightUpperArm;
        int fore = side > 0 ? kLeftForearm : kRightForearm;
        int thigh = side > 0 ? kLeftThigh : kRightThigh;
        int shin = side > 0 ? kLeftShin : kRightShin;
        PART(upper, kTunic, mesh.AddCylinder(V3(6.9f * s, 20.6f, 0), 1.5f, 1.9f, 6.8f, 8, true, 0.2f));
        PART(fore, kSkin, mesh.AddCylinder(V3(7.3f * s, 15.4f, 0), 1.2f, 1.45f, 5.6f, 8, false, 0.2f));
        PART(fore, kSkin, mesh.AddEllipsoid(V3(7.4f * s, 14.6f, 0.2f), V3(1.5f, 1.6f, 1.5f), 6, 4));
        PART(thigh, kTrousers, mesh.AddCylinder(V3(2.8f * s, 8.6f, 0), 1.8f, 2.3f, 7.8f, 8, false, 0.2f));
        PART(shin, kTrousers, mesh.AddCylinder(V3(2.8f * s, 2.6f, 0), 1.6f, 1.9f, 6.4f, 8, false, 0.2f));
        PART(shin, kBoots, mesh.AddBox(V3(2.8f * s - 2.0f, 0, -2.2f), V3(2.8f * s + 2.0f, 3.2f, 4.2f), 0.2f));
    }
    // The lamp hangs from the right hand by a short bail.
    PART(kLamp, kMetal, mesh.AddBox(V3(-7.7f, 11.4f, 0.3f), V3(-7.1f, 14.2f, 0.9f), 0.2f));
    PART(kLamp, kMetal, mesh.AddCylinder(V3(-7.4f, 10.6f, 0.6f), 2.3f, 0.7f, 1.7f, 8, true, 0.2f));
    PART(kLamp, kGlass, mesh.AddCylinder(V3(-7.4f, 7.2f, 0.6f), 1.8f, 1.8f, 3.4f, 8, false, 0.2f));
    PART(kLamp, kMetal, mesh.AddCylinder(V3(-7.4f, 6.4f, 0.6f), 2.3f, 2.3f, 0.8f, 8, true, 0.2f));
    return mesh;
}

// Standing, running and jumping poses, frame by frame.
static Pose DelverPose(int frame) {
    Pose p = RestPose();
    if (frame < 12) {
        // Breathing, a slow look around and the lamp swaying.
        float ph = kTau * frame / 12.0f;
        p.angles[kChest].x = 2.0f * std::sin(ph);
        p.angles[kHead].y = 8.0f * std::sin(ph);
        p.angles[kHead].x = -2.0f * std::sin(ph);
        p.angles[kLeftUpperArm].z = 6.0f + 2.0f * std::sin(ph);
        p.angles[kRightUpperArm].z = -4.0f;
        p.angles[kRightUpperArm].x = -12.0f;
        p.angles[kRightForearm].x = -25.0f;
        p.angles[kLamp].x = 37.0f + 4.0f * std::sin(ph);
        p.angles[kLamp].z = 5.0f * std::sin(ph);
    } else if (frame < 23) {
        // One stride of each leg over eleven frames, arms swinging against the legs.
        float ph = kTau * (frame - 12) / 11.0f;
        float s = std::sin(ph);
        p.offsets[kHips].y = -1.2f + 1.2f * std::fabs(std::cos(ph));
        p.angles[kHips].y = 8.0f * s;
        p.angles[kChest].x = 12.0f;
        p.angles[kChest].y = -10.0f * s;
        p.angles[kHead].x = -8.0f;
        p.angles[kLeftThigh].x = -38.0f * s;
        p.angles[kRightThigh].x = 38.0f * s;
        p.angles[kLeftShin].x = 20.0f + 35.0f * std::max(0.0f, std::sin(ph + 1.2f));
        p.angles[kRightShin].x = 20.0f + 35.0f * std::max(0.0f, -std::sin(ph + 1.2f));
        p.angles[kLeftUpperArm].x = 32.0f * s;
        p.angles[kLeftUpperArm].z = 8.0f;
        p.angles[kLeftForearm].x = -40.0f;
        p.angles[kRightUpperArm].x = -20.0f - 14.0f * s;
        p.angles[kRightUpperArm].z = -8.0f;
        p.angles[kRightForearm].x = -45.0f;
        p.angles[kLamp].x = 60.0f + 18.0f * s;
    } else {
        // Jump: crouch (23), stretch off the ground (24-26), tuck in the air (27-30),
        // absorb the landing (31) and stand up again (32).
        static const float kCrouch[10] = {1.0f, 0.1f, 0.0f, 0.2f, 0.5f, 0.7f, 0.8f, 0.8f, 1.0f, 0.35f};
        static const float kArmsUp[10] = {0.0f, 1.0f, 0.9f, 0.6f, 0.5f, 0.45f, 0.4f, 0.4f, 0.1f, 0.0f};
        int j = frame - 23;
        float c = kCrouch[j], a = kArmsUp[j];
        bool airborne = j >= 1 && j <= 7;
        p.offsets[kHips].y = airborne ? 0.0f : -3.2f * c;
        p.angles[kChest].x = 14.0f * c;
        // On the ground the knees bend to take the weight; in the air they fold up tight.
        float thigh = airborne ? 75.0f : 45.0f, shin = airborne ? 120.0f : 80.0f;
        p.angles[kLeftThigh].x = -thigh * c;
        p.angles[kRightThigh].x = -thigh * c - (airborne ? 10.0f * c : 0.0f);
        p.angles[kLeftShin].x = shin * c;
        p.angles[kRightShin].x = shin * c;
        p.angles[kLeftUpperArm].z = 10.0f + 110.0f * a;
        p.angles[kLeftUpperArm].x = -20.0f * c;
        p.angles[kRightUpperArm].z = -10.0f - 70.0f * a;
        p.angles[kRightUpperArm].x = -20.0f * c;
        p.angles[kRightForearm].x = -30.0f;
        p.angles[kLamp].x = 30.0f - 40.0f * a;
        p.angles[kHead].x = airborne ? -10.0f : 5.0f * c;
    }
    return p;
}

static void PoseFrames(ShapeMesh* mesh, const std::vector<Bone>& bones, int count, Pose (*pose)(int)) {
    ShapeMesh rest = *mesh;
    mesh->positions = PosePositions(rest, bones, pose(0));
    mesh->frames.clear();
    for (int f = 1; f < count; f++) {
        mesh->frames.push_back(PosePositions(rest, bones, pose(f)));
    }
}

ShapeMesh MakeDelverMesh() {
    ShapeMesh mesh = DelverRest();
    PoseFrames(&mesh, DelverBones(), kDelverFrames, DelverPose);
    return mesh;
}

ShapeMesh MakeLampGlowMesh() {
    ShapeMesh mesh;
    mesh.bone = kLamp;
    // Three crossed squares around the glass; the additive glow texture is a soft disc.
    const float h = 9.0f;
    const float uv[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    Vec3 c = kLampCentre;
    mesh.AddQuad(Add(c, V3(-h, -h, 0)), Add(c, V3(h, -h, 0)), Add(c, V3(h, h, 0)), Add(c, V3(-h, h, 0)), uv,
                 0);
    mesh.AddQuad(Add(c, V3(0, -h, h)), Add(c, V3(0, -h, -h)), Add(c, V3(0, h, -h)), Add(c, V3(0, h, h)), uv,
                 0);
    mesh.AddQuad(Add(c, V3(-h, 0, h)), Add(c, V3(h, 0, h)), Add(c, V3(h, 0, -h)), Add(c, V3(-h, 0, -h)), uv,
                 0);
    PoseFrames(&mesh, DelverBones(), kDelverFrames, DelverPose);
    return mesh;
}

// The title dance: hips swaying, arms waving in turn, a bounce on every beat.
static Pose DancePose(int frame) {
    Pose p = RestPose();
    float ph = kTau * (frame % 9) / 9.0f;
    float s = std::sin(ph), c = std::cos(ph);
    p.offsets[kHips].y = -1.5f * std::fabs(s);
    p.angles[kHips].z = 10.0f * s;
    p.angles[kChest].z = -14.0f * s;
    p.angles[kHead].z = 10.0f * s;
    p.angles[kHead].y = 15.0f * c;
    p.angles[kLeftUpperArm].z = 90.0f + 60.0f * s;
    p.angles[kLeftForearm].z = 30.0f + 30.0f * c;
    p.angles[kRightUpperArm].z = -90.0f + 60.0f * s;
    p.angles[kRightForearm].z = -30.0f + 30.0f * c;
    p.angles[kLamp].z = -40.0f * s;
    p.angles[kLeftThigh].z = 8.0f * s;
    p.angles[kRightThigh].z = 8.0f * s;
    p.angles[kLeftThigh].x = -25.0f * std::max(0.0f, s);
    p.angles[kLeftShin].x = 45.0f * std::max(0.0f, s);
    p.angles[kRightThigh].x = -25.0f * std::max(0.0f, -s);
    p.angles[kRightShin].x = 45.0f * std::max(0.0f, -s);
    return p;
}

ShapeMesh MakeDanceMesh() {
    ShapeMesh mesh = DelverRest();
    PoseFrames(&mesh, DelverBones(), kDanceFrames, DancePose);
    return mesh;
}

// Enemies, all facing -x. Up to 4, odd numbers are beetles (six legs in a
// tripod gait), even numbers walking toadstools (two stubby legs under a cap);
// 5 and 6 are the frozen garden's frost crawler and lantern mite, below.
enum { kEnemyBody, kEnemyShell, kEnemyLeg, kEnemyEye, kEnemyPupil, kEnemySpots };
enum { kEnemyBoneBody, kEnemyBoneHead, kEnemyBoneLeg0 };

static std::vector<Bone> BeetleBones() {
    std::vector<Bone> b(2 + 6);
    b[kEnemyBoneBody] = Bone{-1, V3(0, 8, 0)};
    b[kEnemyBoneHead] = Bone{kEnemyBoneBody, V3(-9, 7, 0)};
    for (int i = 0; i < 6; i++) {
        float x = -6.0f + 6.0f * (i / 2);
        float z = i % 2 ? -5.0f : 5.0f;
        b[kEnemyBoneLeg0 + i] = Bone{kEnemyBoneBody, V3(x, 6, z)};
    }
    return b;
}

static ShapeMesh BeetleRest() {
    ShapeMesh mesh;
    PART(kEnemyBoneBody, kEnemyShell, mesh.AddEllipsoid(V3(1, 9, 0), V3(11, 6.5f, 8.5f), 12, 8));
    PART(kEnemyBoneBody, kEnemyBody, mesh.AddEllipsoid(V3(0, 6.5f, 0), V3(10, 3, 7.5f), 10, 5));
    PART(kEnemyBoneHead, kEnemyBody, mesh.AddEllipsoid(V3(-11, 7, 0), V3(4.5f, 4, 5), 8, 6));
    for (int side = -1; side <= 1; side += 2) {
        float s = static_cast<float>(side);
        PART(kEnemyBoneHead, kEnemyEye,
             mesh.AddEllipsoid(V3(-13.5f, 9, 2.4f * s), V3(1.6f, 1.8f, 1.6f), 6, 4));
        PART(kEnemyBoneHead, kEnemyPupil,
             mesh.AddEllipsoid(V3(-14.8f, 9.2f, 2.5f * s), V3(0.6f, 0.9f, 0.7f), 5, 3));
        // Mandibles: small cones pointing forward.
        mesh.transform = Compose(Translation(V3(-14, 5.5f, 1.8f * s)), RotationZ(90));
        PART(kEnemyBoneHead, kEnemyLeg, mesh.AddCylinder(V3(0, 0, 0), 1.0f, 0.0f, 3.5f, 6, true, 0.2f));
        mesh.transform = Identity();
    }
    for (int i = 0; i < 6; i++) {
        float x = -6.0f + 6.0f * (i / 2);
        float s = i % 2 ? -1.0f : 1.0f;
        // A leg: out and down from the body to the ground.
        mesh.transform = Compose(Translation(V3(x, 6, 5 * s)), RotationX(s * 125.0f));
        PART(kEnemyBoneLeg0 + i, kEnemyLeg, mesh.AddCylinder(V3(0, 0, 0), 1.0f, 0.6f, 8.5f, 6, false, 0.2f));
        mesh.transform = Identity();
    }
    return mesh;
}

static Pose BeetlePose(int frame) {
    Pose p = RestPose();
    float ph = kTau * frame / kEnemyWalkFrames;
    p.offsets[kEnemyBoneBody].y = 0.5f * std::fabs(std::sin(ph));
    p.angles[kEnemyBoneHead].y = 6.0f * std::sin(ph);
    for (int i = 0; i < 6; i++) {
        // Tripod gait: front and back legs of one side move with the middle leg of the other.
        int group = (i / 2 + i % 2) % 2;
        float legPh = ph + (group ? 3.14159265f : 0.0f);
        p.angles[kEnemyBoneLeg0 + i].y = 25.0f * std::sin(legPh);
        p.angles[kEnemyBoneLeg0 + i].x = (i % 2 ? -1.0f : 1.0f) * 12.0f * std::max(0.0f, std::cos(legPh));
    }
    return p;
}

static std::vector<Bone> ToadstoolBones() {
    std::vector<Bone> b(4);
    b[kEnemyBoneBody] = Bone{-1, V3(0, 8, 0)};
    b[kEnemyBoneHead] = Bone{kEnemyBoneBody, V3(0, 16, 0)};
    b[kEnemyBoneLeg0] = Bone{kEnemyBoneBody, V3(0, 7, 3.5f)};
    b[kEnemyBoneLeg0 + 1] = Bone{kEnemyBoneBody, V3(0, 7, -3.5f)};
    return b;
}

static ShapeMesh ToadstoolRest() {
    ShapeMesh mesh;
    PART(kEnemyBoneBody, kEnemyBody, mesh.AddCylinder(V3(0, 6, 0), 6.0f, 4.5f, 11, 12, false, 0.2f));
    PART(kEnemyBoneHead, kEnemyShell, mesh.AddEllipsoid(V3(0, 18, 0), V3(12, 7, 12), 14, 8));
    for (int i = 0; i < 5; i++) {
        float a = kTau * i / 5.0f + 0.4f;
        Vec3 spot = V3(8.0f * std::sin(a), 21.5f + (i % 2), 8.0f * std::cos(a));
        PART(kEnemyBoneHead, kEnemySpots, mesh.AddEllipsoid(spot, V3(2.2f, 1.6f, 2.2f), 6, 4));
    }
    for (int side = -1; side <= 1; side += 2) {
        float s = static_cast<float>(side);
        PART(kEnemyBoneBody, kEnemyEye, mesh.AddEllipsoid(V3(-5, 12, 2.2f * s), V3(1.6f, 2.2f, 1.6f), 6, 4));
        PART(kEnemyBoneBody, kEnemyPupil,
             mesh.AddEllipsoid(V3(-6.4f, 12, 2.3f * s), V3(0.6f, 1.0f, 0.7f), 5, 3));
        int leg = kEnemyBoneLeg0 + (side > 0 ? 0 : 1);
        PART(leg, kEnemyLeg, mesh.AddCylinder(V3(0, 1.5f, 3.5f * s), 1.6f, 1.8f, 5.5f, 8, false, 0.2f));
        PART(leg, kEnemyLeg, mesh.AddEllipsoid(V3(-1.0f, 1.3f, 3.5f * s), V3(3.0f, 1.4f, 2.2f), 8, 4));
    }
    return mesh;
}

static Pose ToadstoolPose(int frame) {
    Pose p = RestPose();
    float ph = kTau * frame / kEnemyWalkFrames;
    float s = std::sin(ph);
    // Legs swing about z, since the toadstool walks along -x.
    float c = std::cos(ph);
    p.angles[kEnemyBoneLeg0].z = 28.0f * c;
    p.angles[kEnemyBoneLeg0 + 1].z = -28.0f * c;
    p.offsets[kEnemyBoneBody].y = 0.9f * std::fabs(s);
    p.angles[kEnemyBoneBody].x = 6.0f * s;
    p.angles[kEnemyBoneHead].x = -5.0f * s;
    p.angles[kEnemyBoneHead].y = 10.0f * s;
    return p;
}

// The frost crawler of the frozen garden: a long, low woodlouse of four icy
// plates with crystal spikes, eight short legs rippling front to back, and
// feelers tipped with frost. Its tail half sways against its head as it goes.
enum {
    kCrawlerBoneTail = 2,
    kCrawlerBoneLeg0,
    kCrawlerLegs = 8,
    kCrawlerBones = kCrawlerBoneLeg0 + kCrawlerLegs
};

static float CrawlerLegX(int leg) {
    return -8.0f + 5.5f * (leg / 2);
}

static std::vector<Bone> CrawlerBones() {
    std::vector<Bone> b(kCrawlerBones);
    b[kEnemyBoneBody] = Bone{-1, V3(0, 6, 0)};
    b[kEnemyBoneHead] = Bone{kEnemyBoneBody, V3(-9, 6, 0)};
    b[kCrawlerBoneTail] = Bone{kEnemyBoneBody, V3(2, 6, 0)};
    for (int i = 0; i < kCrawlerLegs; i++) {
        int parent = i < 4 ? static_cast<int>(kEnemyBoneBody) : static_cast<int>(kCrawlerBoneTail);
        b[kCrawlerBoneLeg0 + i] = Bone{parent, V3(CrawlerLegX(i), 5, i % 2 ? -4.5f : 4.5f)};
    }
    return b;
}

static ShapeMesh CrawlerRest() {
    ShapeMesh mesh;
    // Plates from the front to the tail, each a little lower and narrower.
    static const float kPlateX[4] = {-6.5f, -1.0f, 4.5f, 10.0f};
    static const float kPlateR[4][3] = {
        {4.2f, 5.8f, 8.0f}, {4.4f, 6.0f, 8.4f}, {4.2f, 5.4f, 7.6f}, {3.6f, 4.4f, 6.2f}};
    for (int i = 0; i < 4; i++) {
        int bone = i < 2 ? static_cast<int>(kEnemyBoneBody) : static_cast<int>(kCrawlerBoneTail);
        PART(bone, kEnemyShell,
             mesh.AddEllipsoid(V3(kPlateX[i], 6.5f, 0), V3(kPlateR[i][0], kPlateR[i][1], kPlateR[i][2]), 10,
                               6));
        // A crystal spike on the ridge of every plate, leaning back.
        mesh.transform = Compose(Translation(V3(kPlateX[i], 6.2f + kPlateR[i][1], 0)), RotationZ(-18));
        PART(bone, kEnemySpots, mesh.AddCylinder(V3(0, 0, 0), 1.6f, 0.0f, 4.0f - 0.5f * i, 5, true, 0.2f));
        mesh.transform = Identity();
    }
    PART(kEnemyBoneBody, kEnemyBody, mesh.AddEllipsoid(V3(1, 4.2f, 0), V3(13, 2.6f, 6.8f), 10, 5));
    PART(kEnemyBoneHead, kEnemyBody, mesh.AddEllipsoid(V3(-11.5f, 5.6f, 0), V3(3.8f, 3.4f, 4.6f), 8, 6));
    for (int side = -1; side <= 1; side += 2) {
        float s = static_cast<float>(side);
        PART(kEnemyBoneHead, kEnemyEye,
             mesh.AddEllipsoid(V3(-13.6f, 7.0f, 2.2f * s), V3(1.3f, 1.5f, 1.3f), 6, 4));
        PART(kEnemyBoneHead, kEnemyPupil,
             mesh.AddEllipsoid(V3(-14.7f, 7.1f, 2.3f * s), V3(0.5f, 0.8f, 0.6f), 5, 3));
        // Feelers: thin stalks reaching forward and out, a frost bead on each tip.
        mesh.transform =
            Compose(Translation(V3(-13.5f, 8.0f, 1.6f * s)), Compose(RotationX(30.0f * s), RotationZ(62)));
        PART(kEnemyBoneHead, kEnemyLeg, mesh.AddCylinder(V3(0, 0, 0), 0.5f, 0.3f, 6.0f, 5, false, 0.2f));
        PART(kEnemyBoneHead, kEnemySpots, mesh.AddEllipsoid(V3(0, 6.2f, 0), V3(0.9f, 0.9f, 0.9f), 5, 3));
        mesh.transform = Identity();
    }
    for (int i = 0; i < kCrawlerLegs; i++) {
        float s = i % 2 ? -1.0f : 1.0f;
        int bone = kCrawlerBoneLeg0 + i;
        mesh.transform = Compose(Translation(V3(CrawlerLegX(i), 5, 4.5f * s)), RotationX(s * 132.0f));
        PART(bone, kEnemyLeg, mesh.AddCylinder(V3(0, 0, 0), 1.2f, 0.7f, 7.0f, 6, false, 0.2f));
        mesh.transform = Identity();
    }
    return mesh;
}

static Pose CrawlerPose(int frame) {
    Pose p = RestPose();
    float ph = kTau * frame / kEnemyWalkFrames;
    p.offsets[kEnemyBoneBody].y = 0.3f * std::fabs(std::sin(2.0f * ph));
    p.angles[kEnemyBoneHead].y = 9.0f * std::sin(ph);
    p.angles[kCrawlerBoneTail].y = -10.0f * std::sin(ph);
    for (int i = 0; i < kCrawlerLegs; i++) {
        // A wave runs from the front pair to the back; the two legs of a pair step in turn.
        float legPh = ph - 1.4f * (i / 2) + (i % 2 ? 3.14159265f : 0.0f);
        p.angles[kCrawlerBoneLeg0 + i].y = 22.0f * std::sin(legPh);
        p.angles[kCrawlerBoneLeg0 + i].x = (i % 2 ? -1.0f : 1.0f) * 14.0f * std::max(0.0f, std::cos(legPh));
    }
    return p;
}

// The lantern mite: a round, furry little keeper in a tall pointed hat,
// waddling on two boots and holding a lantern out in front on a crook, so
// that the player sees its light coming through the dark.
enum { kMiteBoneArm = kEnemyBoneLeg0 + 2, kMiteBoneLantern, kMiteBones };

static std::vector<Bone> MiteBones() {
    std::vector<Bone> b(kMiteBones);
    b[kEnemyBoneBody] = Bone{-1, V3(0, 6, 0)};
    b[kEnemyBoneHead] = Bone{kEnemyBoneBody, V3(0, 17, 0)};
    b[kEnemyBoneLeg0] = Bone{kEnemyBoneBody, V3(0, 6, 3.2f)};
    b[kEnemyBoneLeg0 + 1] = Bone{kEnemyBoneBody, V3(0, 6, -3.2f)};
    b[kMiteBoneArm] = Bone{kEnemyBoneBody, V3(-2, 13, -6)};
    b[kMiteBoneLantern] = Bone{kMiteBoneArm, V3(-12, 17.5f, -6)};
    return b;
}

static ShapeMesh MiteRest() {
    ShapeMesh mesh;
    PART(kEnemyBoneBody, kEnemyBody, mesh.AddEllipsoid(V3(0, 11, 0), V3(7, 7.5f, 7), 12, 8));
    // A white beard under the eyes and a nose above it.
    PART(kEnemyBoneBody, kEnemyEye, mesh.AddEllipsoid(V3(-4.6f, 9.5f, 0), V3(3.2f, 4.2f, 4.4f), 8, 6));
    PART(kEnemyBoneBody, kEnemyBody, mesh.AddEllipsoid(V3(-7.2f, 12.6f, 0), V3(1.6f, 1.4f, 1.5f), 6, 4));
    for (int side = -1; side <= 1; side += 2) {
        float s = static_cast<float>(side);
        PART(kEnemyBoneBody, kEnemyEye,
             mesh.AddEllipsoid(V3(-5.8f, 14.6f, 2.2f * s), V3(1.4f, 1.9f, 1.5f), 6, 4));
        PART(kEnemyBoneBody, kEnemyPupil,
             mesh.AddEllipsoid(V3(-7.0f, 14.7f, 2.3f * s), V3(0.5f, 0.9f, 0.7f), 5, 3));
        int leg = kEnemyBoneLeg0 + (side > 0 ? 0 : 1);
        PART(leg, kEnemyLeg, mesh.AddCylinder(V3(0, 1.4f, 3.2f * s), 1.4f, 1.6f, 4.6f, 8, false, 0.2f));
        PART(leg, kEnemyLeg, mesh.AddEllipsoid(V3(-1.2f, 1.2f, 3.2f * s), V3(2.8f, 1.3f, 2.0f), 8, 4));
    }
    // The hat: a brim and a tall cone bent back, a bobble on its tip.
    PART(kEnemyBoneHead, kEnemyShell, mesh.AddCylinder(V3(0, 16.2f, 0), 7.2f, 6.6f, 1.4f, 12, true, 0.2f));
    mesh.transform = Compose(Translation(V3(0.4f, 17.4f, 0)), RotationZ(-14));
    PART(kEnemyBoneHead, kEnemyShell, mesh.AddCylinder(V3(0, 0, 0), 6.4f, 0.4f, 10.5f, 12, true, 0.2f));
    PART(kEnemyBoneHead, kEnemySpots, mesh.AddEllipsoid(V3(0, 10.6f, 0), V3(1.4f, 1.4f, 1.4f), 6, 4));
    mesh.transform = Identity();
    // The arm reaching forward with the crook, and the lantern hanging from its end.
    mesh.transform = Compose(Translation(V3(-2, 13, -6)), RotationZ(70));
    PART(kMiteBoneArm, kEnemyBody, mesh.AddCylinder(V3(0, 0, 0), 1.5f, 1.2f, 5.0f, 6, true, 0.2f));
    mesh.transform = Compose(Translation(V3(-5.5f, 13.5f, -6)), RotationZ(62));
    PART(kMiteBoneArm, kEnemyLeg, mesh.AddCylinder(V3(0, 0, 0), 0.5f, 0.5f, 8.0f, 5, true, 0.2f));
    mesh.transform = Identity();
    PART(kMiteBoneLantern, kEnemyLeg, mesh.AddBox(V3(-12.3f, 14.4f, -6.3f), V3(-11.7f, 17.5f, -5.7f), 0.2f));
    PART(kMiteBoneLantern, kEnemyLeg, mesh.AddCylinder(V3(-12, 13.2f, -6), 2.2f, 0.6f, 1.4f, 6, true, 0.2f));
    PART(kMiteBoneLantern, kEnemySpots,
         mesh.AddCylinder(V3(-12, 9.8f, -6), 1.8f, 1.8f, 3.4f, 6, false, 0.2f));
    PART(kMiteBoneLantern, kEnemyLeg, mesh.AddCylinder(V3(-12, 9.0f, -6), 2.2f, 2.2f, 0.8f, 6, true, 0.2f));
    return mesh;
}

static Pose MitePose(int frame) {
    Pose p = RestPose();
    float ph = kTau * frame / kEnemyWalkFrames;
    float s = std::sin(ph), c = std::cos(ph);
    // A waddle: the legs swing about z (it walks along -x), the body rolls onto the planted foot.
    p.angles[kEnemyBoneLeg0].z = 30.0f * c;
    p.angles[kEnemyBoneLeg0 + 1].z = -30.0f * c;
    p.offsets[kEnemyBoneBody].y = 1.2f * std::fabs(s);
    p.angles[kEnemyBoneBody].x = 7.0f * s;
    p.angles[kEnemyBoneHead].x = -9.0f * s;
    p.angles[kEnemyBoneHead].z = 4.0f * c;
    p.angles[kMiteBoneArm].z = 5.0f * std::sin(2.0f * ph);
    // The lantern swings behind the arm's motion.
    p.angles[kMiteBoneLantern].z = 14.0f * std::sin(ph - 1.0f);
    p.angles[kMiteBoneLantern].x = 6.0f * c;
    return p;
}

ShapeMesh MakeEnemyMesh(int n) {
    ShapeMesh mesh;
    if (n == 5) {
        mesh = CrawlerRest();
        PoseFrames(&mesh, CrawlerBones(), kEnemyWalkFrames, CrawlerPose);
    } else if (n == 6) {
        mesh = MiteRest();
        PoseFrames(&mesh, MiteBones(), kEnemyWalkFrames, MitePose);
    } else if (n % 2 == 1) {
        mesh = BeetleRest();
        PoseFrames(&mesh, BeetleBones(), kEnemyWalkFrames, BeetlePose);
    } else {
        mesh = ToadstoolRest();
        PoseFrames(&mesh, ToadstoolBones(), kEnemyWalkFrames, ToadstoolPose);
    }
    return mesh;
}

static bool AddModel(AssetList* list, const char* name, const ShapeMesh& mesh, std::string* error) {
    std::vector<uint8_t> bytes = ShapeMeshFile(mesh, 0);
    if (bytes.empty()) {
        *error = std::string(name) + ": the model does not fit the format";
        return false;
    }
    list->Add(name, CONTENT_BASE_PACKAGE, std::move(bytes));
    return true;
}

bool GenerateCharacters(AssetList* list, std::string* error) {
    if (!AddModel(list, "delver.vmd", MakeDelverMesh(), error) ||
        !AddModel(list, "light.vmd", MakeLampGlowMesh(), error) ||
        !AddModel(list, "logo\\delver.vmd", MakeDanceMesh(), error)) {
        return false;
    }
    const AtlasCell delver[9] = {
        {Rgb(236, 188, 150), 0.3f, 0.0f}, {Rgb(52, 120, 70), 0.6f, 0.5f},   {Rgb(178, 40, 36), 0.5f, 0.3f},
        {Rgb(92, 60, 34), 0.6f, 0.0f},    {Rgb(150, 150, 160), 0.4f, 0.0f}, {Rgb(255, 226, 120), 0.2f, 0.0f},
        {Rgb(20, 18, 24), 0.1f, 0.0f},    {Rgb(60, 40, 22), 0.4f, 0.6f},    {Rgb(70, 80, 120), 0.6f, 0.3f}};
    list->Add("delver.tga", CONTENT_BASE_PACKAGE, EncodeTga(MakeAtlas(delver, 9, 11u)));
    // Colour schemes of the enemies: body, shell/cap, legs, eye white, pupil, spots.
    static const int kSchemes[kEnemyModels][6][3] = {
        {{60, 50, 40}, {40, 120, 150}, {30, 30, 30}, {250, 250, 240}, {10, 10, 10}, {220, 220, 80}},
        {{235, 225, 200}, {200, 40, 30}, {220, 210, 180}, {250, 250, 240}, {10, 10, 10}, {250, 250, 245}},
        {{70, 40, 30}, {170, 90, 30}, {40, 25, 20}, {250, 240, 200}, {120, 10, 10}, {240, 200, 60}},
        {{230, 220, 190}, {120, 60, 160}, {210, 200, 170}, {250, 250, 240}, {10, 10, 10}, {240, 230, 120}},
        {{44, 56, 92}, {150, 200, 235}, {34, 44, 70}, {235, 245, 255}, {20, 90, 140}, {225, 248, 255}},
        {{112, 84, 70}, {60, 78, 150}, {52, 40, 34}, {240, 240, 235}, {10, 10, 10}, {255, 206, 100}}};
    for (int n = 1; n <= kEnemyModels; n++) {
        char name[32];
        snprintf(name, sizeof(name), "enemy%02d.vmd", n);
        if (!AddModel(list, name, MakeEnemyMesh(n), error)) {
            return false;
        }
        AtlasCell cells[6];
        for (int c = 0; c < 6; c++) {
            const int* rgb = kSchemes[n - 1][c];
            cells[c] = AtlasCell{Rgb(rgb[0], rgb[1], rgb[2]), c == kEnemyShell ? 0.7f : 0.4f,
                                 c == kEnemyShell && n % 2 == 1 ? 0.4f : 0.0f};
        }
        snprintf(name, sizeof(name), "enemy%02d.tga", n);
        list->Add(name, CONTENT_BASE_PACKAGE, EncodeTga(MakeAtlas(cells, 6, 40u + n)));
    }
    return true;
}
