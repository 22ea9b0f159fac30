#include "CRegistryKey.h"

#include <algorithm>
#include <utility>

namespace {

// Grows a buffer to hold `needed` elements and a terminator; when the key reports no more
// than the buffer already holds, the buffer doubles, so that a retry always has more room.
template <class Buffer>
void GrowFor(Buffer& buffer, DWORD needed)
{
    size_t size = static_cast<size_t>(needed) + 1;
    if (size <= buffer.size())
        size = buffer.size() * 2;
    buffer.resize(std::max<size_t>(size, 1));
}

}  // namespace

CRegistryKey::Exception::Exception(const std::string& where, unsigned long error, std::string key,
                                   std::string reason)
    : CWin32Exception(where, error), m_key(std::move(key)), m_reason(std::move(reason))
{
    Compose();
}

void CRegistryKey::Exception::NameKey(const std::string& key)
{
    if (m_key.empty()) {
        m_key = key;
        Compose();
    }
}

void CRegistryKey::Exception::Compose()
{
    m_text = m_key.empty() ? "" : "key \"" + m_key + "\": ";
    m_text += m_reason.empty() ? GetWhere() + " - " + GetErrorMessage() : m_reason;
}

const char* CRegistryKey::Exception::what() const noexcept
{
    return m_text.c_str();
}

CRegistryKey::Value::Exception::Exception()
    : CRegistryKey::Exception("CRegistryKey::Value::Exception", ERROR_INVALID_PARAMETER)
{
}

CRegistryKey::Value::Value(std::string name, DWORD type, const BYTE* data, DWORD length)
    : m_name(std::move(name)), m_type(type), m_data(data, data + length)
{
}

std::string CRegistryKey::Value::AsString() const
{
    if (m_type != REG_SZ && m_type != REG_EXPAND_SZ)
        throw Exception();
    auto end = std::find(m_data.begin(), m_data.end(), BYTE{0});
    return std::string(m_data.begin(), end);
}

DWORD CRegistryKey::Value::AsDWORD() const
{
    if ((m_type != REG_DWORD && m_type != REG_DWORD_BIG_ENDIAN) || m_data.size() < 4)
        throw Exception();
    if (m_type == REG_DWORD_BIG_ENDIAN)
        return static_cast<DWORD>(m_data[0]) << 24 | static_cast<DWORD>(m_data[1]) << 16 |
               static_cast<DWORD>(m_data[2]) << 8 | m_data[3];
    return static_cast<DWORD>(m_data[3]) << 24 | static_cast<DWORD>(m_data[2]) << 16 |
           static_cast<DWORD>(m_data[1]) << 8 | m_data[0];
}

CRegistryKey::CountedRegKey* CRegistryKey::NewCCountedRegKey(HKEY handle)
{
    auto* counted = new CountedRegKey;
    counted->handle = handle;
    counted->count = 1;
    return counted;
}

CRegistryKey::CRegistryKey(HKEY root, const char* subKey, REGSAM access, const char* machine)
{
    HKEY connected = nullptr;
    if (machine != nullptr) {
        LONG error = RegConnectRegistryA(machine, root, &connected);
        if (error != ERROR_SUCCESS)
            throw Exception("CRegistryKey::CRegistryKey() - RegConnectRegistry",
                            static_cast<unsigned long>(error));
    }
    HKEY opened = nullptr;
    LONG error = RegOpenKeyExA(connected != nullptr ? connected : root, subKey, 0, access, &opened);
    // The connected root is needed only to open the key below it.
    if (connected != nullptr)
        RegCloseKey(connected);
    if (error != ERROR_SUCCESS)
        throw Exception("CRegistryKey::CRegistryKey(HKEY hKey ...)",
                        static_cast<unsigned long>(error));
    m_counted = NewCCountedRegKey(opened);
}

CRegistryKey::CRegistryKey(const CRegistryKey& other) : m_counted(other.m_counted)
{
    if (m_counted != nullptr)
        ++m_counted->count;
}

CRegistryKey& CRegistryKey::operator=(const CRegistryKey& other)
{
    if (other.m_counted != nullptr)
        ++other.m_counted->count;
    Release();
    m_counted = other.m_counted;
    return *this;
}

CRegistryKey::~CRegistryKey()
{
    Release();
}

void CRegistryKey::Release()
{
    if (m_counted != nullptr && --m_counted->count == 0) {
        RegCloseKey(m_counted->handle);
        delete m_counted;
    }
    m_counted = nullptr;
}

HKEY CRegistryKey::Handle() const
{
    return m_counted != nullptr ? m_counted->handle : nullptr;
}

CRegistryKey::SubkeyIterator CRegistryKey::BeginSubkeyIteration() const
{
    return SubkeyIterator(*this);
}

CRegistryKey::SubkeyIterator CRegistryKey::EndSubkeyIteration() const
{
    return SubkeyIterator();
}

CRegistryKey::ValueIterator CRegistryKey::BeginValueIteration() const
{
    return ValueIterator(*this);
}

CRegistryKey::ValueIterator CRegistryKey::EndValueIteration() const
{
    return ValueIterator();
}

CRegistryKey::SubkeyIterator::SubkeyIterator(const CRegistryKey& key) : m_key(key)
{
    DWORD longestName = 0;
    DWORD longestClass = 0;
    LONG error = RegQueryInfoKeyA(m_key.Handle(), nullptr, nullptr, nullptr, nullptr, &longestName,
                                  &longestClass, nullptr, nullptr, nullptr, nullptr, nullptr);
    if (error != ERROR_SUCCESS)
        throw Exception("CRegistryKey::SubkeyIterator::SubkeyIterator()",
                        static_cast<unsigned long>(error));
    m_nameBuffer.resize(static_cast<size_t>(longestName) + 1);
    m_classBuffer.resize(static_cast<size_t>(longestClass) + 1);
    GetSubkeyInfo();
}

void CRegistryKey::SubkeyIterator::GetSubkeyInfo()
{
    const char* where = "CRegistryKey::SubkeyIterator::GetSubkeyInfo()";
    for (;;) {
        DWORD nameLength = static_cast<DWORD>(m_nameBuffer.size());
        DWORD classLength = static_cast<DWORD>(m_classBuffer.size());
        LONG error = RegEnumKeyExA(m_key.Handle(), m_index, m_nameBuffer.data(), &nameLength,
                                   nullptr, m_classBuffer.data(), &classLength, nullptr);
        if (error == ERROR_SUCCESS) {
            m_name.assign(m_nameBuffer.data(), nameLength);
            return;
        }
        if (error == ERROR_MORE_DATA) {
            DWORD subKeys = 0;
            DWORD longestName = 0;
            DWORD longestClass = 0;
            LONG infoError =
                RegQueryInfoKeyA(m_key.Handle(), nullptr, nullptr, nullptr, &subKeys, &longestName,
                                 &longestClass, nullptr, nullptr, nullptr, nullptr, nullptr);
            if (infoError != ERROR_SUCCESS)
                throw Exception(where, static_cast<unsigned long>(infoError));
            if (subKeys == 0)
                error = ERROR_NO_MORE_ITEMS;
            else {
                GrowFor(m_nameBuffer, longestName);
                GrowFor(m_classBuffer, longestClass);
                continue;
            }
        }
        if (error == ERROR_NO_MORE_ITEMS) {
            m_key.Release();
            m_name.clear();
            return;
        }
        throw Exception(where, static_cast<unsigned long>(error));
    }
}

CRegistryKey CRegistryKey::SubkeyIterator::OpenKey(REGSAM access) const
{
    return CRegistryKey(m_key.Handle(), m_name.c_str(), access);
}

CRegistryKey::SubkeyIterator& CRegistryKey::SubkeyIterator::operator++()
{
    if (m_key.m_counted != nullptr) {
        ++m_index;
        GetSubkeyInfo();
    }
    return *this;
}

bool CRegistryKey::SubkeyIterator::operator==(const SubkeyIterator& other) const
{
    return m_key.m_counted == other.m_key.m_counted &&
           (m_key.m_counted == nullptr || m_index == other.m_index);
}

CRegistryKey::ValueIterator::ValueIterator(const CRegistryKey& key) : m_key(key)
{
    DWORD longestName = 0;
    DWORD longestData = 0;
    LONG error = RegQueryInfoKeyA(m_key.Handle(), nullptr, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, nullptr, &longestName, &longestData, nullptr, nullptr);
    if (error != ERROR_SUCCESS)
        throw Exception("CRegistryKey::ValueIterator::ValueIterator()",
                        static_cast<unsigned long>(error));
    m_nameBuffer.resize(static_cast<size_t>(longestName) + 1);
    m_dataBuffer.resize(static_cast<size_t>(longestData) + 1);
    GetValueInfo();
}

void CRegistryKey::ValueIterator::GetValueInfo()
{
    const char* where = "CRegistryKey::ValueIterator::GetValueInfo()";
    for (;;) {
        DWORD nameLength = static_cast<DWORD>(m_nameBuffer.size());
        m_dataLength = static_cast<DWORD>(m_dataBuffer.size());
        LONG error = RegEnumValueA(m_key.Handle(), m_index, m_nameBuffer.data(), &nameLength,
                                   nullptr, &m_type, m_dataBuffer.data(), &m_dataLength);
        if (error == ERROR_SUCCESS) {
            m_value = Value(std::string(m_nameBuffer.data(), nameLength), m_type,
                            m_dataBuffer.data(), m_dataLength);
            return;
        }
        if (error == ERROR_MORE_DATA) {
            DWORD values = 0;
            DWORD longestName = 0;
            DWORD longestData = 0;
            LONG infoError =
                RegQueryInfoKeyA(m_key.Handle(), nullptr, nullptr, nullptr, nullptr, nullptr,
                                 nullptr, &values, &longestName, &longestData, nullptr, nullptr);
            if (infoError != ERROR_SUCCESS)
                throw Exception(where, static_cast<unsigned long>(infoError));
            if (values == 0)
                error = ERROR_NO_MORE_ITEMS;
            else {
                GrowFor(m_nameBuffer, longestName);
                GrowFor(m_dataBuffer, longestData);
                continue;
            }
        }
        if (error == ERROR_NO_MORE_ITEMS) {
            m_key.Release();
            m_value = Value();
            return;
        }
        throw Exception(where, static_cast<unsigned long>(error));
    }
}

CRegistryKey::ValueIterator& CRegistryKey::ValueIterator::operator++()
{
    if (m_key.m_counted != nullptr) {
        ++m_index;
        GetValueInfo();
    }
    return *this;
}

bool CRegistryKey::ValueIterator::operator==(const ValueIterator& other) const
{
    return m_key.m_counted == other.m_key.m_counted &&
           (m_key.m_counted == nullptr || m_index == other.m_index);
}
