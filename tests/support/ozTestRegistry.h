// A registry the tests fill before reading it back through the product's registry functions:
// on Windows, keys below HKEY_CURRENT_USER\Software\ozADM-tests of the live registry (removed
// afterwards); elsewhere a hive file built for the test and mounted as HKEY_CURRENT_USER of a
// machine folder of its own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/ozRegistryTypes.h"

class ozTestRegistry {
public:
    // The key below HKEY_CURRENT_USER that the test's keys go under.
    static constexpr const char* Base = "Software\\ozADM-tests";

    ozTestRegistry();
    ozTestRegistry(const ozTestRegistry&) = delete;
    ozTestRegistry& operator=(const ozTestRegistry&) = delete;
    ~ozTestRegistry();

    // Paths are below Base.
    void AddKey(const std::string& path);
    void SetValue(const std::string& path, const std::string& name, unsigned type,
                  const std::string& bytes);
    void SetString(const std::string& path, const std::string& name, const std::string& text,
                   unsigned type = 1);
    void SetMultiString(const std::string& path, const std::string& name,
                        const std::vector<std::string>& strings);
    void SetDword(const std::string& path, const std::string& name, std::uint32_t number);
    // Makes what was added readable through the registry functions.
    void Publish();
    // A machine name that reaches this registry through RegConnectRegistryA, or null where
    // only the local machine can be used.
    const char* MachineName() const;
    // True where keys added after Publish() are seen at once by keys already open (the live
    // registry), false where the registry is a file read when opened.
    bool IsLive() const;
    // The folder of the machine (empty on Windows).
    const std::string& Folder() const { return m_folder; }

private:
    std::string m_folder;
    struct Hive;
    Hive* m_hive = nullptr;
};
