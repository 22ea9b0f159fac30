// Libraries loaded at run time by name: the profile libraries the control binds for each load
// and save.
#pragma once

#include <string>

// A loaded library, released when the object goes. Not copyable.
class ozDynamicLibrary {
public:
    ozDynamicLibrary() = default;
    ~ozDynamicLibrary();
    ozDynamicLibrary(const ozDynamicLibrary&) = delete;
    ozDynamicLibrary& operator=(const ozDynamicLibrary&) = delete;

    // Loads the library `name`. A name without a folder is looked for on Windows first beside
    // the module this code is linked into (the control, or the program; a file there is the
    // one loaded, or its error reported), then in the system's usual places; on POSIX only in
    // the system's usual places. On POSIX a name ending in ".dll" that cannot be loaded is
    // tried again as "lib<name>.so" in the same folder ("ozRegOZP.dll" as "libozRegOZP.so").
    // Releases a library loaded before. False, with Error() saying why, when nothing could be
    // loaded.
    bool Load(const char* name);
    // The address of the exported function `name`, or null when the library has none (or none
    // is loaded).
    void (*Function(const char* name) const)();
    // Releases the library; nothing when none is loaded.
    void Release();
    bool Loaded() const { return m_handle != nullptr; }
    const std::string& Error() const { return m_error; }

private:
    void* m_handle = nullptr;
    std::string m_error;
};
