// A model: up to 512 frames (meshes) of one object, frame 0 with the full
// topology and the rest positions only, plus the flat triangle list the
// renderer draws. On disk a model is a "VMDL" header followed by its frames;
// locations embed models in the same format.
//
// BuildFrame (model_frame.cpp) expands one frame, or a blend of two, into
// frameVertices: three 32-byte vertices per triangle, drawn as GL_TRIANGLES
// with interleaved arrays. The array is sized by the first build and only
// grows if a later frame has more triangles, which content never does.
#pragma once

class ResourceManager;
class Mesh;

// One vertex of a built frame, the layout the draw code hands to GL.
struct FrameVertex {
    float position[3];
    float normal[3];
    float texCoord[2];
};
static_assert(sizeof(FrameVertex) == 32, "frame vertices are 32 bytes");

class Model {
public:
    static const int kMaxFrames = 512;

    unsigned short frameCount;
    Mesh* frames[kMaxFrames];    // frame 0 first; null in free entries
    FrameVertex* frameVertices;  // frameTriangles x 3 vertices, null until built
    unsigned int frameTriangles;
    unsigned char modelFlag;     // kept for the owner; never interpreted here
    unsigned int frameCapacity;  // triangles frameVertices has room for

    Model();
    ~Model();
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    // Frees every frame and the built vertices; zeroes the counts and the flag.
    void Clear();
    // Reads a whole "VMDL" model; returns the bytes consumed, 0 on failure. On failure the
    // frames read before the bad one stay, and frameCount counts exactly those.
    unsigned int Parse(const unsigned char* bytes, unsigned int length);
    // Opens name through the resource manager and parses it; 1 or 0.
    int Load(ResourceManager* resources, const char* name);
    // Size in bytes of the file Serialise writes.
    unsigned int Size() const;
    // Writes the model into out (room for Size bytes); returns the bytes written.
    unsigned int Serialise(unsigned char* out) const;
    // Writes the model to a file (temporary file, then renamed); 1 or 0.
    int Save(const char* path) const;
    // Builds frameVertices from frame a, or from a blend towards frame b by fraction t.
    void BuildFrame(int a, int b, float t);
};

// The game's lamp model, posed with the player's frames.
extern Model lampModel;
// The title menu's keyboard and logo-text models.
extern Model g_keyboardModel;
extern Model g_logoTextModel;
