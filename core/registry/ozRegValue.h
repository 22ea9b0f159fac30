// One registry value of a key together with the operation a profile or a policy applies to
// it. It carries up to two data, converts them to and from the editable text form, and keeps
// a flag telling whether its key path, name or data hold a variable (`ozVariableMarkers`).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ozRegItem.h"

class ozSubKey;

// What is to be done with a value (stored as its character code).
enum tOPVALUE : int {
    OpInsert = 'I',  // Data
    OpDelete = 'D',  // Data (the empty string)
    OpCodeL = 'L',   // Data
    OpAppend = 'A',  // Data (the text to append) and Data2
    OpCodeR = 'R',   // Data and Data2
    OpChange = 'C',  // Data (the new datum) and Data2 (the old one)
};

// The kind of registry item a value stands for (stored as its character code). Everything
// read from a live registry is 'r'.
enum tREGITEMTYPE : int {
    RitR = 'r',
    RitM = 'm',
    RitF = 'f',
    RitA = 'a',
};

// How many data an operation takes for an item type; NumNone means not allowed.
enum tNUMVALUE : int {
    NumNone = 0,
    NumOne = 1,
    NumTwo = 2,
};

// The registry data types the value treats specially.
enum : unsigned long {
    RegNone = 0,
    RegSz = 1,
    RegExpandSz = 2,
    RegBinary = 3,
    RegDword = 4,
    RegDwordBigEndian = 5,
    RegMultiSz = 7,
    RegQword = 11,
};

// Text form: strings (types 1, 2, 7) show every byte with the terminator, a zero byte as "~"
// and the masking character "$" doubled ("$$"), "~" as "$~"; numbers (4, 5) as "0x%08X";
// every other type as "%02X" bytes separated by blanks.
//
// A value is owned by the values collection of its key; the key pointer is not owned.
class ozRegValue : public ozRegItem {
public:
    ozRegValue();
    ozRegValue(const ozRegValue& other);
    ozRegValue& operator=(const ozRegValue& other);
    ~ozRegValue() override;

    // The registry data type (1 string, 2 expandable string, 3 binary, 4 number, 5 big-endian
    // number, 7 multi-string; other codes are kept as given). 0 at construction.
    virtual void Type(unsigned long type);
    virtual unsigned long Type() const;
    // The item type, 'r' at construction.
    virtual void RIT(tREGITEMTYPE itemType);
    virtual tREGITEMTYPE RIT() const;
    // Replaces the name by a copy of `name` and refreshes the variables flag. A null name is
    // ignored. The name is null until first set.
    virtual void Name(const char* name);
    virtual const char* Name() const;
    // Stores the operation. Setting 'C' on a value without a second datum starts the change
    // from an empty old string (which only takes effect for type 1).
    virtual void Op(tOPVALUE op);
    virtual tOPVALUE Op() const;
    virtual void WVar(bool holdsVariable);
    virtual bool WVar() const;
    // The number of the predefined key the value lies under (see ozRootNumber).
    virtual void Root(unsigned int root);
    virtual unsigned int Root() const;
    // The key holding the value; setting a non-null key also takes over its root number.
    virtual void SubKey(ozSubKey* key);
    virtual ozSubKey* SubKey() const;
    virtual void LineNumber(unsigned long line);
    virtual unsigned long LineNumber() const;
    // The first datum: its byte count and bytes (null until set).
    virtual unsigned long Size() const;
    virtual const unsigned char* Data() const;
    // The second datum, used by the operations that take two.
    virtual unsigned long Size2() const;
    virtual const unsigned char* Data2() const;

    // Makes the value the empty string with operation 'D'.
    virtual bool SetDelete();
    // Stores s (type 1) with its terminator; an operation that is not insert-like becomes
    // 'I'. False for null s.
    virtual bool SetString(const char* s);
    // As SetString, with type 2.
    virtual bool SetExpandString(const char* s);
    // Stores the 32-bit number d in machine byte order (type 4, size 4); an operation that is
    // not insert-like becomes 'I'.
    virtual bool SetDWORD(unsigned long d);
    // Stores the 64-bit number in machine byte order (type 11, size 8); the operation as for
    // SetDWORD.
    virtual bool SetQWORD(std::uint64_t number);
    // Stores the lines as a multi-string (type 7): each line with its terminator, then the
    // closing terminator. Empty lines are left out, as an empty string would end the list.
    // The operation as for SetDWORD.
    virtual bool SetMultiString(const std::vector<std::string>& lines);
    // Stores a copy of the bytes with the given type, leaving the operation as it is; size 0
    // keeps a one-byte zero buffer. False for null data.
    virtual bool SetData(unsigned long type, unsigned long size, const unsigned char* data);
    // Stores the second datum like SetData. Refused (false, nothing changed) unless the
    // operation takes two data ('A', 'R', 'C'), type equals the value's type, data is not null
    // and the item type is 'r' or 'm'.
    virtual bool SetData2(unsigned long type, unsigned long size, const unsigned char* data);

    // Operation 'D'.
    virtual bool IsDelete() const;
    // Operation 'I' or 'C'.
    virtual bool IsInsert() const;
    // How many data op takes for this value's item type; op 0 means the value's operation.
    virtual tNUMVALUE GetNumValue(tOPVALUE op) const;
    // Turns a change whose new string is the old one with text added into an append of the
    // added text. With ask set, the appended-text dialog (ozAppendedTextDialog) confirms or
    // edits the text first; a cancel returns false and changes nothing. Refused (false)
    // unless the operation is 'C', both data exist and the type is 1, 2 or 7.
    virtual bool SwitchChange2Append(bool ask);
    // The text form of Data (or of Data2 when `second`), newly allocated with new[]; the
    // caller releases it with delete[]. Never null.
    virtual char* FormatValue(bool second) const;
    // Parses text in the text form of `type` and stores it with SetData (or SetData2 when
    // `second`). Returns true whatever the outcome; a number that cannot be read changes
    // nothing.
    virtual bool SetFormattedData(unsigned long type, const char* text, bool second);
    // Recomputes the variables flag. `full` includes the key path; with `full` false and
    // `parentHasVariables` true the flag is simply set. Without both markers nothing changes.
    // Always true.
    virtual bool RefreshVariablesFlag(bool full, bool parentHasVariables);

protected:
    // The operation takes two data: 'A', 'R' or 'C'.
    virtual bool _IsOp2() const;
    // Removes the masking from s in place ("$$" to "$", "$~" to "~", a lone "~" to a zero
    // byte) and returns the number of characters removed. 0 for null s.
    virtual int _RemoveMasking(char* s) const;

public:
    // How many data op takes for an item type; NumNone for unknown types or operations.
    static tNUMVALUE GetNumValue(tREGITEMTYPE itemType, tOPVALUE op);
    // True when text is not null, both markers are set, the start marker occurs in text and
    // the end marker occurs after the end of that first occurrence.
    static bool HasVariables(const char* text);

    // The text form as a string; see FormatValue.
    std::string FormattedValue(bool second = false) const;
    // The first datum read as text up to its first zero byte, never beyond Size(): data read
    // from outside need not carry a terminator. Empty without data.
    std::string DataText() const;
    // The first datum read as a multi-string: its strings up to the first empty one, never
    // beyond Size() (a last string without terminator counts). Empty without data.
    std::vector<std::string> MultiStringLines() const;

private:
    struct Datum {
        unsigned long size = 0;
        std::unique_ptr<unsigned char[]> bytes;
    };
    static bool StoreDatum(Datum& datum, unsigned long size, const unsigned char* data);
    static void CopyDatum(Datum& to, const Datum& from);
    void MakeInsertLike();

    unsigned long m_type = RegNone;
    tREGITEMTYPE m_itemType = RitR;
    std::unique_ptr<char[]> m_name;
    tOPVALUE m_op = OpInsert;
    bool m_holdsVariable = false;
    unsigned int m_root = 0;
    ozSubKey* m_key = nullptr;
    unsigned long m_lineNumber = 0;
    Datum m_data;
    Datum m_data2;
};
