// The exporter side of the profile contract: a profile library implements this class to write
// the user and machine registry trees to profile files. The control creates it through the
// library's "InitExportObject", drives it, and gives it back with "DestroyExportObject".
#pragma once

class ozSubKey;
struct tTreeCodeHandle;

class ozRegExport {
public:
    // The model the export is for; null until the control sets it.
    void Code(tTreeCodeHandle* code) { m_code = code; }
    tTreeCodeHandle* Code() const { return m_code; }

    // Starts writing the machine side to `file`; false ends the save.
    virtual bool BeginMachineProfile(const char* file) = 0;
    // Starts writing the user side to `file`; false ends the save.
    virtual bool BeginUserProfile(const char* file) = 0;
    // Writes one key with its values. Every sub key of a tree is handed over in tree
    // pre-order, whatever its flags; the exporter decides what to write. False ends the save.
    virtual bool ExportKey(ozSubKey* key) = 0;
    // Completes the files begun so far. The control never calls it: a library completes its
    // files at the latest when the exporter is given back.
    virtual bool Flush() = 0;

protected:
    // Objects are created and destroyed only inside the library, through the derived type.
    ozRegExport() = default;
    ~ozRegExport() = default;

    // For the library's own use; zero at construction.
    void* m_libraryState = nullptr;

private:
    tTreeCodeHandle* m_code = nullptr;
};
