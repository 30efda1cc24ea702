#include "resources/lightmap_set.h"

#include <GL/gl.h>

#include <cstdlib>
#include <cstring>

#include "platform/sys_files.h"
#include "resources/byte_stream.h"
#include "resources/resource_manager.h"

static const unsigned int kBlockHeaderSize = 18;

LightmapSet::LightmapSet() : quality(0.1f), lightCount(0), pageCount(0), areaCount(0) {
    memset(glTextures, 0, sizeof(glTextures));
    memset(pages, 0, sizeof(pages));
    memset(coords, 0, sizeof(coords));
    memset(coordCounts, 0, sizeof(coordCounts));
    memset(lights, 0, sizeof(lights));
    Clear();
}

LightmapSet::~LightmapSet() {
    Clear();
}

// GL entry points are harmless without a current context under libglvnd, but
// they do nothing useful either; glGetString tells the two cases apart.
static int HaveGlContext() {
    return glGetString(GL_VERSION) != nullptr;
}

void LightmapSet::Clear() {
    int haveContext = -1;
    for (int i = 0; i < kMaxPages; i++) {
        if (glTextures[i]) {
            if (haveContext < 0) {
                haveContext = HaveGlContext();
            }
            if (haveContext) {
                GLuint name = glTextures[i];
                glDeleteTextures(1, &name);
            }
            glTextures[i] = 0;
        }
        free(pages[i]);
        pages[i] = nullptr;
    }
    for (int i = 0; i < kMaxPieces; i++) {
        free(coords[i]);
        coords[i] = nullptr;
        coordCounts[i] = 0;
    }
    memset(cellFree, 1, sizeof(cellFree));
    for (int p = 0; p < kMaxPages; p++) {
        freeCells[p] = kCellsPerSide * kCellsPerSide;
        for (int y = 0; y < kCellsPerSide; y++) {
            freeInRow[p][y] = kCellsPerSide;
        }
    }
    sharedBlackSet = 0;
    sharedBlack.page = 0;
    sharedBlack.u = 0.0f;
    sharedBlack.v = 0.0f;
    lightCount = 0;
    pageCount = 0;
    areaCount = 0;
}

unsigned int LightmapSet::AddLight(float x, float y, float z, float r, float g, float b, float range,
                                   int shadows) {
    if (lightCount >= static_cast<unsigned int>(kMaxLights)) {
        return lightCount;
    }
    Light& light = lights[lightCount];
    light.enabled = 1;
    light.position[0] = x;
    light.position[1] = y;
    light.position[2] = z;
    light.colour[0] = r;
    light.colour[1] = g;
    light.colour[2] = b;
    light.range = range;
    light.flags = shadows ? 1u : 0u;
    return lightCount++;
}

// Reads the piece records; 0 on any index, count or length that does not fit.
static int ReadPieceRecords(ByteReader& reader, LightmapSet& set) {
    unsigned int records = reader.U16();
    for (unsigned int r = 0; r < records; r++) {
        unsigned int index = reader.U16();
        unsigned int count = reader.U32();
        if (reader.failed || index >= static_cast<unsigned int>(LightmapSet::kMaxPieces) ||
            set.coords[index] || count > reader.Remaining() / 12) {
            return 0;
        }
        LightmapVertex* entries = static_cast<LightmapVertex*>(malloc(count ? count * 12u : 1));
        for (unsigned int i = 0; i < count; i++) {
            entries[i].page = reader.U32();
            entries[i].u = reader.F32();
            entries[i].v = reader.F32();
        }
        set.coords[index] = entries;
        set.coordCounts[index] = count;
    }
    return !reader.failed;
}

unsigned int LightmapSet::Parse(const unsigned char* bytes, unsigned int length) {
    if (!bytes || length < 4 || memcmp(bytes, "VLLM", 4) != 0) {
        return 0;
    }
    Clear();
    ByteReader reader(bytes, length);
    reader.Skip(8);
    unsigned int pagesInFile = reader.U32();
    unsigned int areas = reader.U32();
    if (reader.failed || pagesInFile > static_cast<unsigned int>(kMaxPages) ||
        !ReadPieceRecords(reader, *this) ||
        !reader.Need(pagesInFile * static_cast<unsigned int>(kPageBytes))) {
        Clear();
        return 0;
    }
    for (unsigned int i = 0; i < pagesInFile; i++) {
        pages[i] = static_cast<unsigned char*>(malloc(kPageBytes));
        reader.Bytes(pages[i], kPageBytes);
    }
    pageCount = pagesInFile;
    areaCount = areas;
    return reader.position;
}

int LightmapSet::Load(ResourceManager* resources, const char* name) {
    if (!resources) {
        return 0;
    }
    const unsigned char* bytes = resources->Open(name);
    if (!bytes) {
        return 0;
    }
    return Parse(bytes, resources->bufferSize) != 0;
}

unsigned int LightmapSet::Size() const {
    unsigned int size = kBlockHeaderSize;
    for (int i = 0; i < kMaxPieces; i++) {
        if (coords[i]) {
            size += 6 + 12 * coordCounts[i];
        }
    }
    return size + pageCount * static_cast<unsigned int>(kPageBytes);
}

unsigned int LightmapSet::Serialise(unsigned char* out) const {
    ByteWriter writer(out);
    writer.Tag("VLLM");
    writer.U32(Size());
    writer.U32(pageCount);
    writer.U32(areaCount);
    unsigned int records = 0;
    for (int i = 0; i < kMaxPieces; i++) {
        records += coords[i] != nullptr;
    }
    writer.U16(records);
    for (int i = 0; i < kMaxPieces; i++) {
        if (!coords[i]) {
            continue;
        }
        writer.U16(i);
        writer.U32(coordCounts[i]);
        for (unsigned int k = 0; k < coordCounts[i]; k++) {
            writer.U32(coords[i][k].page);
            writer.F32(coords[i][k].u);
            writer.F32(coords[i][k].v);
        }
    }
    for (unsigned int p = 0; p < pageCount; p++) {
        if (pages[p]) {
            writer.Bytes(pages[p], kPageBytes);
        } else {
            // A page index below pageCount without texels only arises from a failed
            // allocation; it is written black so the block stays well-formed.
            memset(out + writer.position, 0, kPageBytes);
            writer.position += kPageBytes;
        }
    }
    return writer.position;
}

int LightmapSet::Save(const char* path) const {
    unsigned int size = Size();
    unsigned char* bytes = static_cast<unsigned char*>(malloc(size));
    Serialise(bytes);
    int ok = Sys_WriteFileAtomic(path, bytes, size);
    free(bytes);
    return ok;
}

void LightmapSet::ForgetTextures() {
    memset(glTextures, 0, sizeof(glTextures));
}

void LightmapSet::Upload() {
    if (!HaveGlContext()) {
        ForgetTextures();
        return;
    }
    for (int i = 0; i < kMaxPages; i++) {
        if (glTextures[i]) {
            GLuint name = glTextures[i];
            glDeleteTextures(1, &name);
            glTextures[i] = 0;
        }
    }
    for (unsigned int i = 0; i < pageCount; i++) {
        if (!pages[i]) {
            continue;
        }
        GLuint name = 0;
        glGenTextures(1, &name);
        glBindTexture(GL_TEXTURE_2D, name);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexImage2D(GL_TEXTURE_2D, 0, 3, kPageSize, kPageSize, 0, GL_RGB, GL_UNSIGNED_BYTE, pages[i]);
        glTextures[i] = name;
    }
}

// 1 when cells column..column+w-1 of rows row..row+h-1 of page are free; otherwise 0 with
// *blocked set to the column of the first taken cell met.
static int RectangleFree(const unsigned char (*cells)[LightmapSet::kCellsPerSide], int w, int h, int column,
                         int row, int* blocked) {
    for (int j = 0; j < h; j++) {
        const unsigned char* line = cells[row + j] + column;
        for (int i = 0; i < w; i++) {
            if (!line[i]) {
                *blocked = column + i;
                return 0;
            }
        }
    }
    return 1;
}

int LightmapSet::AllocateArea(int w, int h, int* page, int* column, int* row) {
    if (w < 1 || h < 1 || w > kCellsPerSide || h > kCellsPerSide) {
        return 0;
    }
    // First fit in page, row, column order. Pages and rows without enough free cells are
    // passed over, and a taken cell rules out every column up to it: the same first fit,
    // found without looking at most of the cells.
    for (int p = 0; p < kMaxPages; p++) {
        if (freeCells[p] < w * h) {
            continue;
        }
        for (int y = 0; y + h <= kCellsPerSide; y++) {
            int rowsFit = 1;
            for (int j = 0; j < h && rowsFit; j++) {
                rowsFit = freeInRow[p][y + j] >= w;
            }
            if (!rowsFit) {
                continue;
            }
            for (int x = 0; x + w <= kCellsPerSide;) {
                int blocked;
                if (!RectangleFree(cellFree[p], w, h, x, y, &blocked)) {
                    x = blocked + 1;
                    continue;
                }
                for (int j = 0; j < h; j++) {
                    memset(&cellFree[p][y + j][x], 0, w);
                    freeInRow[p][y + j] -= w;
                }
                freeCells[p] -= w * h;
                *page = p;
                *column = x;
                *row = y;
                return 1;
            }
        }
    }
    return 0;
}

void LightmapSet::FreeArea(int w, int h, int page, int column, int row) {
    if (page < 0 || page >= kMaxPages || column < 0 || row < 0 || w < 1 || h < 1 ||
        column + w > kCellsPerSide || row + h > kCellsPerSide) {
        return;
    }
    for (int j = 0; j < h; j++) {
        for (int i = 0; i < w; i++) {
            int taken = !cellFree[page][row + j][column + i];
            freeCells[page] += taken;
            freeInRow[page][row + j] += taken;
            cellFree[page][row + j][column + i] = 1;
        }
    }
}

unsigned char* LightmapSet::EnsurePage(int page) {
    if (page < 0 || page >= kMaxPages) {
        return nullptr;
    }
    if (!pages[page]) {
        pages[page] = static_cast<unsigned char*>(calloc(kPageBytes, 1));
        pageCount++;
    }
    return pages[page];
}
