// An open key of a registry (the live one on Windows, hive files elsewhere), read through the
// registry functions of the platform. Copies of a key, of its iterators and of its values share
// one reference-counted handle, closed when the last copy goes.
#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "CWin32Exception.h"
#include "platform/ozRegistryApi.h"

class CRegistryKey {
public:
    // A registry failure: where it arose, the Win32 error code and, once known, the path (below
    // its predefined key) of the key being read; `reason`, when given, says what is wrong in
    // place of the system's message. what() reads `key "PATH": ` followed by the reason or by
    // where and the system's message.
    class Exception : public CWin32Exception {
    public:
        Exception(const std::string& where, unsigned long error, std::string key = "",
                  std::string reason = "");

        const std::string& Key() const { return m_key; }
        // What is wrong: the reason given, else the system's message for the error code.
        const std::string& Reason() const
        {
            return m_reason.empty() ? GetErrorMessage() : m_reason;
        }
        // Names the key the failure arose in, unless one is named already.
        void NameKey(const std::string& key);
        const char* what() const noexcept override;

    private:
        void Compose();

        std::string m_key;
        std::string m_reason;
        std::string m_text;
    };

    // One value: name, registry type and raw data.
    class Value {
    public:
        // Refused conversion of a value: "CRegistryKey::Value::Exception", code 87.
        class Exception : public CRegistryKey::Exception {
        public:
            Exception();
        };

        Value() = default;
        Value(std::string name, DWORD type, const BYTE* data, DWORD length);

        const std::string& Name() const { return m_name; }
        DWORD Type() const { return m_type; }
        DWORD Length() const { return static_cast<DWORD>(m_data.size()); }
        // The raw data; never null, also for an empty value.
        const BYTE* Data() const { return m_data.empty() ? &s_noData : m_data.data(); }
        // The text of a string (type 1) or expandable string (type 2) value, up to its first
        // zero byte; throws Value::Exception for other types.
        std::string AsString() const;
        // The number of a type 4 or (big-endian) type 5 value; throws Value::Exception for
        // other types or data shorter than 4 bytes.
        DWORD AsDWORD() const;

    private:
        std::string m_name;
        DWORD m_type = REG_NONE;
        std::vector<BYTE> m_data;
        static inline const BYTE s_noData = 0;
    };

    class SubkeyIterator;
    class ValueIterator;

    // Opens `subKey` below the predefined or open key `root` with the given access rights, on
    // `machine` (null: this machine, connected to first with RegConnectRegistryA). Throws
    // Exception "CRegistryKey::CRegistryKey() - RegConnectRegistry" when the machine cannot be
    // reached and "CRegistryKey::CRegistryKey(HKEY hKey ...)" when the key cannot be opened.
    CRegistryKey(HKEY root, const char* subKey, REGSAM access = KEY_READ,
                 const char* machine = nullptr);
    CRegistryKey(const CRegistryKey& other);
    CRegistryKey& operator=(const CRegistryKey& other);
    ~CRegistryKey();

    HKEY Handle() const;

    SubkeyIterator BeginSubkeyIteration() const;
    SubkeyIterator EndSubkeyIteration() const;
    ValueIterator BeginValueIteration() const;
    ValueIterator EndValueIteration() const;

private:
    // The shared handle record: the handle and how many copies hold it.
    struct CountedRegKey {
        HKEY handle;
        std::atomic<long> count;
    };
    static CountedRegKey* NewCCountedRegKey(HKEY handle);
    // A key without a handle: what an end iterator holds.
    CRegistryKey() = default;
    void Release();

    CountedRegKey* m_counted = nullptr;

    friend class SubkeyIterator;
    friend class ValueIterator;
};

// Walks the sub keys of a key in enumeration order. An iterator past the last sub key equals
// the end iterator and holds no key.
class CRegistryKey::SubkeyIterator {
public:
    // Throws Exception "CRegistryKey::SubkeyIterator::SubkeyIterator()" when the key's sizes
    // cannot be read and "CRegistryKey::SubkeyIterator::GetSubkeyInfo()" when a step fails.
    explicit SubkeyIterator(const CRegistryKey& key);
    SubkeyIterator() = default;  // the end iterator

    // The current sub key's name.
    const std::string& Name() const { return m_name; }
    // Opens the current sub key.
    CRegistryKey OpenKey(REGSAM access = KEY_READ) const;
    SubkeyIterator& operator++();
    bool operator==(const SubkeyIterator& other) const;
    bool operator!=(const SubkeyIterator& other) const { return !(*this == other); }

private:
    void GetSubkeyInfo();

    CRegistryKey m_key;
    DWORD m_index = 0;
    std::vector<char> m_nameBuffer;
    std::vector<char> m_classBuffer;
    std::string m_name;
};

// Walks the values of a key in enumeration order, like SubkeyIterator.
class CRegistryKey::ValueIterator {
public:
    // Throws Exception "CRegistryKey::ValueIterator::ValueIterator()" when the key's sizes
    // cannot be read and "CRegistryKey::ValueIterator::GetValueInfo()" when a step fails.
    explicit ValueIterator(const CRegistryKey& key);
    ValueIterator() = default;  // the end iterator

    const Value& operator*() const { return m_value; }
    const Value* operator->() const { return &m_value; }
    ValueIterator& operator++();
    bool operator==(const ValueIterator& other) const;
    bool operator!=(const ValueIterator& other) const { return !(*this == other); }

private:
    void GetValueInfo();

    CRegistryKey m_key;
    DWORD m_index = 0;
    std::vector<char> m_nameBuffer;
    std::vector<BYTE> m_dataBuffer;
    DWORD m_type = REG_NONE;
    DWORD m_dataLength = 0;
    Value m_value;
};
