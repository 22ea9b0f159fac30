#include <gtest/gtest.h>
#include <windows.h>

#include "ozTestRegistry.h"

struct ozTestRegistry::Hive {};

namespace {

std::string InBase(const std::string& path)
{
    return path.empty() ? ozTestRegistry::Base : std::string(ozTestRegistry::Base) + "\\" + path;
}

HKEY CreateKey(const std::string& path)
{
    HKEY key = nullptr;
    LONG error = RegCreateKeyExA(HKEY_CURRENT_USER, InBase(path).c_str(), 0, nullptr, 0,
                                 KEY_ALL_ACCESS, nullptr, &key, nullptr);
    EXPECT_EQ(error, ERROR_SUCCESS) << "creating " << path;
    return key;
}

}  // namespace

ozTestRegistry::ozTestRegistry()
{
    RegDeleteTreeA(HKEY_CURRENT_USER, Base);
    RegCloseKey(CreateKey(""));
}

ozTestRegistry::~ozTestRegistry()
{
    RegDeleteTreeA(HKEY_CURRENT_USER, Base);
}

void ozTestRegistry::AddKey(const std::string& path)
{
    RegCloseKey(CreateKey(path));
}

void ozTestRegistry::SetValue(const std::string& path, const std::string& name, unsigned type,
                              const std::string& bytes)
{
    HKEY key = CreateKey(path);
    LONG error =
        RegSetValueExA(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                       static_cast<DWORD>(bytes.size()));
    EXPECT_EQ(error, ERROR_SUCCESS) << "setting " << path << " " << name;
    RegCloseKey(key);
}

void ozTestRegistry::SetString(const std::string& path, const std::string& name,
                               const std::string& text, unsigned type)
{
    SetValue(path, name, type, text + std::string(1, '\0'));
}

void ozTestRegistry::SetMultiString(const std::string& path, const std::string& name,
                                    const std::vector<std::string>& strings)
{
    std::string bytes;
    for (const std::string& s : strings)
        bytes += s + std::string(1, '\0');
    SetValue(path, name, REG_MULTI_SZ, bytes + std::string(1, '\0'));
}

void ozTestRegistry::SetDword(const std::string& path, const std::string& name,
                              std::uint32_t number)
{
    SetValue(path, name, REG_DWORD, std::string(reinterpret_cast<const char*>(&number), 4));
}

void ozTestRegistry::Publish() {}

const char* ozTestRegistry::MachineName() const
{
    return nullptr;
}

bool ozTestRegistry::IsLive() const
{
    return true;
}
