#include "ozTemplateLoad.h"

#include <filesystem>
#if defined(_WIN32)
#include <windows.h>
#endif

#include "loader/ozADMXLoad.h"
#include "ozTestFiles.h"

std::string ozSourcePath(const std::string& relative)
{
    return ozPlatformPath(std::string(OZ_SOURCE_DIR) + "/" + relative);
}

std::string ozCorpusPath(const std::string& relative)
{
    std::string folder = ozPlatformPath(OZ_CORPUS_DIR);
    if (std::string(OZ_CORPUS_DIR).empty() || !std::filesystem::is_directory(folder))
        return {};
    return folder + "/" + relative;
}

bool ozNarrowTextHoldsChinese()
{
#if defined(_WIN32)
    UINT codePage = GetACP();
    return codePage == CP_UTF8 || codePage == 936 || codePage == 950;
#else
    return true;
#endif
}

ozTemplateLoad::ozTemplateLoad() = default;

ozTemplateLoad::~ozTemplateLoad()
{
    EBNFSetCodeHandle(m_code);
    EBNFDestroyCode();
}

bool ozTemplateLoad::LoadGrammar()
{
    return EBNFLoad(ozSourcePath("grammar/adm.bnf").c_str()) != 0;
}

bool ozTemplateLoad::Load(const std::string& file)
{
    EBNFSetCodeHandle(m_code);
    bool loaded =
        (ozIsADMXFile(file.c_str()) ? ozADMXFileLoad(file.c_str()) : FileLoad(file.c_str(), 1)) > 0;
    // The engine hands back what the actions built, also after a failure.
    m_code = static_cast<tTreeCodeHandle*>(EBNFGetCodeHandle());
    m_message = loaded ? "" : ErrorMessage();
    return loaded;
}
