#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "ozTestHive.h"
#include "ozTestRegistry.h"
#include "platform/ozRegistryApi.h"

struct ozTestRegistry::Hive {
    explicit Hive(const std::string& file) : hive(file) {}
    ozTestHive hive;
};

namespace {

std::string InBase(const std::string& path)
{
    return path.empty() ? ozTestRegistry::Base : std::string(ozTestRegistry::Base) + "\\" + path;
}

}  // namespace

ozTestRegistry::ozTestRegistry()
{
    std::string pattern =
        (std::filesystem::temp_directory_path() / "ozadm-registry-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        ADD_FAILURE() << "cannot create a folder for the test registry";
    m_folder = pattern;
    m_hive = new Hive(m_folder + "/NTUSER.DAT");
    EXPECT_TRUE(m_hive->hive.ok()) << "cannot write an empty hive in " << m_folder;
    m_hive->hive.AddKey(Base);
}

ozTestRegistry::~ozTestRegistry()
{
    ozRegistryUseLocalMachine(nullptr, nullptr);
    delete m_hive;
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

void ozTestRegistry::AddKey(const std::string& path)
{
    EXPECT_TRUE(m_hive->hive.AddKey(InBase(path))) << path;
}

void ozTestRegistry::SetValue(const std::string& path, const std::string& name, unsigned type,
                              const std::string& bytes)
{
    EXPECT_TRUE(m_hive->hive.SetValue(InBase(path), name, type, bytes)) << path << " " << name;
}

void ozTestRegistry::SetString(const std::string& path, const std::string& name,
                               const std::string& text, unsigned type)
{
    EXPECT_TRUE(m_hive->hive.SetString(InBase(path), name, text, type)) << path << " " << name;
}

void ozTestRegistry::SetMultiString(const std::string& path, const std::string& name,
                                    const std::vector<std::string>& strings)
{
    EXPECT_TRUE(m_hive->hive.SetMultiString(InBase(path), name, strings)) << path << " " << name;
}

void ozTestRegistry::SetDword(const std::string& path, const std::string& name,
                              std::uint32_t number)
{
    EXPECT_TRUE(m_hive->hive.SetDword(InBase(path), name, number)) << path << " " << name;
}

void ozTestRegistry::Publish()
{
    EXPECT_TRUE(m_hive->hive.Commit());
    ozRegistryUseLocalMachine(m_folder.c_str(), nullptr);
}

const char* ozTestRegistry::MachineName() const
{
    return m_folder.c_str();
}

bool ozTestRegistry::IsLive() const
{
    return false;
}
