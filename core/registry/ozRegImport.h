// The importer side of the profile contract: a profile library implements this class to read
// profile files into the user and machine registry trees of a loaded template. The control
// creates it through the library's "InitImportObject", drives it, and gives it back with
// "DestroyImportObject". The protected operations create keys, values and data buffers in the
// control's trees; they are implemented in core/adm, where the code object's trees are known.
#pragma once

#include "ozRegValue.h"

class ozSubKey;
struct tTreeCodeHandle;

class ozRegImport {
public:
    virtual ~ozRegImport();

    // Reads the user profile from file; false makes the load fail. Keys and values created
    // before a failure stay in the trees.
    virtual bool ImportUserProfile(const char* file) = 0;
    // Reads the machine profile from file; called only for a named machine profile.
    virtual bool ImportMachineProfile(const char* file) = 0;
    // The code object whose trees the import fills; null until the control sets it.
    virtual tTreeCodeHandle* CodeHandle();
    virtual void CodeHandle(tTreeCodeHandle* code);

protected:
    ozRegImport() = default;

    // The key at the path `name` below the predefined key of number `root` (1 is
    // HKEY_CURRENT_USER, 2 HKEY_LOCAL_MACHINE, ...), found or created along the whole path: in
    // the user tree for root 1, in the machine tree for every other root. The same root and
    // path give the same key. Null without code object or for a null name.
    virtual ozSubKey* _CreateKey(unsigned int root, const char* name);
    // The value `name` of the key at path `key`, found or created; its root number is set. The
    // tree is chosen as for _CreateKey, except that item type 'm' always uses the user tree,
    // where root 1 becomes 2 (the value is filed below HKEY_LOCAL_MACHINE inside the user
    // tree). The item type is not stored: the caller sets it (RIT), the operation and the
    // data. Null without code object, for a null key path or name, or when the key cannot be
    // had.
    virtual ozRegValue* _CreateValue(unsigned int root, const char* key, const char* name,
                                     tREGITEMTYPE type);
    // A new buffer of size bytes, released by the caller with delete[]; the value setters
    // copy what they are given. Null without code object.
    virtual unsigned char* _CreateData(unsigned long size);

private:
    tTreeCodeHandle* m_code = nullptr;
};
