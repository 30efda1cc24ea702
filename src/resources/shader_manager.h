// ARB shader programs, embedded in the GL window. Only `supported` is read
// outside this class (the start-up log).
#pragma once

class ShaderManager {
public:
    unsigned char supported;  // 1 once the shader entry points were found and the slots set up

    ShaderManager() : supported(0) {}
};
