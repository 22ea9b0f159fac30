// Reads ".ozp" profiles into the control's registry trees: every key of a file goes into the
// tree its root selects, whichever profile is being read, with its operation, flags and values.
// A key whose values are all machine items ('m') is created where those values go, in the user
// tree below the machine's root key, as a profile written from there has it.
#pragma once

#include <string>
#include <vector>

#include "core/registry/ozRegImport.h"

class ozOZPImporter : public ozRegImport {
public:
    // Both read a whole profile file. False, with a message naming the file and line on the
    // standard error stream and in LastError(), for a file that cannot be read or is not a
    // profile of a version this library reads; what was read before the error stays. A null
    // or empty file name reads nothing and succeeds.
    bool ImportUserProfile(const char* file) override;
    bool ImportMachineProfile(const char* file) override;

    const std::string& LastError() const { return m_lastError; }

private:
    struct Value {
        std::string name;
        unsigned long type = 0;
        char item = 'r', op = 'I';
        bool hasData = false, hasData2 = false;
        std::vector<unsigned char> data, data2;
    };
    // A key section as read, created in the trees once it is complete.
    struct Section {
        unsigned int root = 0;
        std::string path;
        char op = 'I';
        bool save = false, adm = false, selected = false, wvar = false;
        std::vector<Value> values;
    };

    // ReadFile, with running out of memory reported as a failure.
    bool Import(const char* file);
    bool ReadFile(const char* file);
    bool Fail(const std::string& file, size_t line, const std::string& message);
    static bool ReadSection(const std::string& header, Section& section);
    static bool ReadKeyLine(const std::string& line, Section& section);
    static bool ReadValueLine(const std::string& line, Value& value);
    // Creates the section's key and values; false when the trees refuse one.
    bool Apply(const Section& section);

    std::string m_lastError;
};
