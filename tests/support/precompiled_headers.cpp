// CMake wants a source in the targets that own the precompiled headers.
