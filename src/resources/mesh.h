// One frame of a model: positions, and for the first frame also the triangle
// topology, texture coordinates and per-triangle normals. On disk a frame is a
// "VMSH" block; files keep the third component up, memory keeps the second up,
// so every position and direction is turned on the way in and out.
//
// A later frame stores only positions. It takes private copies of the first
// frame's triangles, normals and texture data, so each frame is complete in
// itself and can be drawn or blended without looking back at frame 0.
//
// Parsing takes (bytes, length) and fails cleanly: truncated blocks, indices
// beyond the counts and missing texture triangles all return 0 and leave the
// mesh empty.
#pragma once

class ResourceManager;

class Mesh {
public:
    unsigned short vertexCount;
    unsigned short faceCount;
    unsigned short texCoordCount;
    unsigned short texFaceCount;
    float* vertices;           // vertexCount x 3
    unsigned short* faces;     // faceCount x 3 vertex indices
    float* faceNormals;        // faceCount x 4 x 3: face vector, corner normals 0, 1, 2
    float* texCoords;          // texCoordCount x 3 (u, v, w)
    unsigned short* texFaces;  // texFaceCount x 3 texture-coordinate indices
    float boundsMin[3];
    float boundsMax[3];
    float centre[3];
    float radius;

    Mesh();
    ~Mesh();
    Mesh(const Mesh&) = delete;
    Mesh& operator=(const Mesh&) = delete;

    // Frees the arrays and zeroes the counts.
    void Clear();
    // Replaces the arrays with zero-filled ones of the given counts (for tools building meshes).
    void Allocate(unsigned short vertices, unsigned short faces, unsigned short texCoords,
                  unsigned short texFaces);
    // Recomputes boundsMin, boundsMax, centre and radius from the positions.
    void ComputeBounds();
    // Reads one block; firstFrame is null for a full block, else frame 0 of the model.
    // Returns the bytes consumed, 0 on failure (the mesh is then empty).
    unsigned int Parse(const unsigned char* bytes, unsigned int length, const Mesh* firstFrame);
    // Opens name through the resource manager and parses it; 1 or 0.
    int Load(ResourceManager* resources, const char* name, const Mesh* firstFrame);
    // Size in bytes of the block Serialise writes.
    unsigned int Size(int positionsOnly) const;
    // Writes the block into out (room for Size bytes); returns the bytes written.
    unsigned int Serialise(unsigned char* out, int positionsOnly) const;
    // Writes one block to a file (temporary file, then renamed); 1 or 0.
    int Save(const char* path, int positionsOnly) const;

    // Memory vector from file vector: (p, q, r) -> (p, r, -q).
    static void FromFile(const float* file, float* memory);
    // File vector from memory vector: (x, y, z) -> (x, -z, y).
    static void ToFile(const float* memory, float* file);

private:
    int CopyTopology(const Mesh* firstFrame);
    int ReadTopology(class ByteReader& reader);
};
