// Loading templates in tests as a control does: the shipped grammar, the engine, and the
// loader's actions linked into the test executable.
#pragma once

#include <string>

#include "core/adm/tTreeCodeHandle.h"
#include "engine/ozEBNF.h"

// A path of the source tree or the template corpus as the test's platform opens it.
std::string ozSourcePath(const std::string& relative);
// The corpus folder ("" when it is not there).
std::string ozCorpusPath(const std::string& relative);

// Whether narrow text (UTF-8 on POSIX, the ANSI code page on Windows) can hold Chinese.
bool ozNarrowTextHoldsChinese();

// One control's loads: templates merge into one code object, destroyed with this object.
class ozTemplateLoad {
public:
    ozTemplateLoad();
    ~ozTemplateLoad();
    ozTemplateLoad(const ozTemplateLoad&) = delete;
    ozTemplateLoad& operator=(const ozTemplateLoad&) = delete;

    // Loads the shipped grammar (once per process is enough, but harmless again).
    static bool LoadGrammar();
    // Reads a template (ADM, or ADMX definitions by their extension) into the code object;
    // false when it is refused (then Message() has the engine's text).
    bool Load(const std::string& file);
    const std::string& Message() const { return m_message; }
    tTreeCodeHandle* Code() const { return m_code; }
    ozADMTree& Tree() const { return *m_code->tree; }

private:
    tTreeCodeHandle* m_code = nullptr;
    std::string m_message;
};
