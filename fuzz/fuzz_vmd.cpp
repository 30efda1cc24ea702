// Model files: any bytes must parse or fail cleanly, and whatever parses must
// serialise and build its frames without touching memory it does not own.
#include <cstdint>
#include <vector>

#include "fuzz_seeds.h"
#include "resources/mesh.h"
#include "resources/model.h"
#include "resources/model_shapes.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Model model;
    if (model.Parse(data, static_cast<unsigned int>(size))) {
        std::vector<unsigned char> out(model.Size());
        model.Serialise(out.data());
        model.BuildFrame(0, model.frameCount - 1, 0.5f);
        model.BuildFrame(model.frameCount - 1, 0, 0.0f);
    }
    Mesh mesh;
    mesh.Parse(data, static_cast<unsigned int>(size), nullptr);
    return 0;
}

static void AddModel(FuzzSeedList& seeds, const Model& model) {
    std::vector<unsigned char> bytes(model.Size());
    model.Serialise(bytes.data());
    AddSeed(seeds, bytes.data(), bytes.size());
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    Model model;
    float lo[3] = {-1, 0, -1}, hi[3] = {1, 2, 1};
    MakeBoxModel(model, lo, hi, 0.5f);
    AddModel(seeds, model);
    // A second, positions-only frame.
    Mesh* frame = new Mesh;
    frame->Allocate(model.frames[0]->vertexCount, 0, 0, 0);
    for (unsigned i = 0; i < frame->vertexCount * 3u; i++) {
        frame->vertices[i] = model.frames[0]->vertices[i] * 1.5f;
    }
    model.frames[1] = frame;
    model.frameCount = 2;
    AddModel(seeds, model);
    MakeGridModel(model, 0, 0, 0, 4, 2, 1);
    AddModel(seeds, model);
    model.Clear();
    AddModel(seeds, model);
}
