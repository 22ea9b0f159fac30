#include "ozTestHive.h"

#include <hivex.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <iterator>

#include "platform/ozAsciiCase.h"
#include "platform/posix/ozUtf8.h"

namespace {

// The file is a 4 KiB base block followed by hive bins; every offset stored in a cell is
// relative to the start of the first bin, not of the file.
constexpr size_t kBaseBlockSize = 4096;
constexpr size_t kBinSize = 4096;
constexpr size_t kBinHeaderSize = 32;
constexpr size_t kChecksumOffset = 0x1FC;
constexpr uint32_t kNoCell = 0xFFFFFFFF;
constexpr size_t kMaxKeyNameUnits = 255;

// Key node flags: the root key is marked as the hive's entry and as undeletable, and a name of
// Latin-1 characters is stored one byte per character ("compressed") instead of in UTF-16LE.
constexpr uint16_t kKeyHiveEntry = 0x0004;
constexpr uint16_t kKeyNoDelete = 0x0008;
constexpr uint16_t kKeyCompressedName = 0x0020;
constexpr size_t kKeyNodeNameOffset = 0x4C;
constexpr size_t kSecurityDescriptorOffset = 0x14;

void PutU16(std::string& bytes, size_t at, uint16_t number)
{
    for (size_t i = 0; i < 2; ++i)
        bytes[at + i] = static_cast<char>(number >> (8 * i));
}

void PutU32(std::string& bytes, size_t at, uint32_t number)
{
    for (size_t i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<char>(number >> (8 * i));
}

void PutU64(std::string& bytes, size_t at, uint64_t number)
{
    for (size_t i = 0; i < 8; ++i)
        bytes[at + i] = static_cast<char>(number >> (8 * i));
}

uint32_t GetU32(const std::string& bytes, size_t at)
{
    uint32_t number = 0;
    for (size_t i = 0; i < 4; ++i)
        number |= uint32_t(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
    return number;
}

void AppendU16(std::string& bytes, uint16_t number)
{
    bytes.push_back(static_cast<char>(number & 0xFF));
    bytes.push_back(static_cast<char>(number >> 8));
}

// Cells are 8-byte aligned, their 4-byte size field included.
size_t CellSize(size_t contentSize)
{
    return (4 + contentSize + 7) & ~size_t(7);
}

// 100 ns intervals since 1601-01-01, the registry's timestamp unit.
uint64_t FileTimeNow()
{
    constexpr uint64_t kSecondsFrom1601To1970 = 11644473600ull;
    auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    auto ticks = std::chrono::duration_cast<std::chrono::nanoseconds>(sinceEpoch).count() / 100;
    return kSecondsFrom1601To1970 * 10000000ull + static_cast<uint64_t>(ticks);
}

// Readers reject a base block whose checksum is wrong: the XOR of its first 127 dwords, with
// the results 0 and 0xFFFFFFFF, which are never stored, replaced by 1 and 0xFFFFFFFE.
uint32_t BaseBlockChecksum(const std::string& baseBlock)
{
    uint32_t checksum = 0;
    for (size_t at = 0; at < kChecksumOffset; at += 4)
        checksum ^= GetU32(baseBlock, at);
    if (checksum == 0xFFFFFFFF)
        return 0xFFFFFFFE;
    if (checksum == 0)
        return 1;
    return checksum;
}

void AppendSid(std::string& bytes, uint8_t authority, std::initializer_list<uint32_t> subs)
{
    bytes.push_back(1);  // revision
    bytes.push_back(static_cast<char>(subs.size()));
    bytes.append(5, '\0');  // identifier authority: six bytes, big-endian
    bytes.push_back(static_cast<char>(authority));
    for (uint32_t sub : subs) {
        bytes.append(4, '\0');
        PutU32(bytes, bytes.size() - 4, sub);
    }
}

// A self-relative security descriptor owned by Administrators with group SYSTEM, whose DACL
// gives SYSTEM and Administrators full control and Everyone read access, inherited by sub keys
// (libhivex gives each new key its parent's descriptor).
std::string RootSecurityDescriptor()
{
    constexpr uint16_t kSelfRelative = 0x8000;
    constexpr uint16_t kDaclPresent = 0x0004;
    constexpr uint8_t kAccessAllowed = 0;
    constexpr uint8_t kContainerInherit = 0x02;
    constexpr uint32_t kKeyAllAccess = 0xF003F;
    constexpr uint32_t kKeyRead = 0x20019;
    constexpr size_t kHeaderSize = 20;

    std::string system, administrators, everyone;
    AppendSid(system, 5, {18});
    AppendSid(administrators, 5, {32, 544});
    AppendSid(everyone, 1, {0});

    std::string dacl(8, '\0');
    auto appendAce = [&dacl](uint32_t mask, const std::string& sid) {
        size_t at = dacl.size();
        dacl.append(8, '\0');
        dacl[at] = static_cast<char>(kAccessAllowed);
        dacl[at + 1] = static_cast<char>(kContainerInherit);
        PutU16(dacl, at + 2, static_cast<uint16_t>(8 + sid.size()));
        PutU32(dacl, at + 4, mask);
        dacl += sid;
    };
    appendAce(kKeyAllAccess, system);
    appendAce(kKeyAllAccess, administrators);
    appendAce(kKeyRead, everyone);
    dacl[0] = 2;  // ACL revision
    PutU16(dacl, 2, static_cast<uint16_t>(dacl.size()));
    PutU16(dacl, 4, 3);  // ACE count

    std::string descriptor(kHeaderSize, '\0');
    descriptor[0] = 1;  // revision
    PutU16(descriptor, 2, kSelfRelative | kDaclPresent);
    PutU32(descriptor, 4, static_cast<uint32_t>(descriptor.size()));  // owner
    descriptor += administrators;
    PutU32(descriptor, 8, static_cast<uint32_t>(descriptor.size()));  // group
    descriptor += system;
    PutU32(descriptor, 16, static_cast<uint32_t>(descriptor.size()));  // DACL; no SACL
    descriptor += dacl;
    return descriptor;
}

// The stored form of a key name: one byte per character when all are Latin-1, else UTF-16LE.
// False when the name cannot be a key name.
bool EncodeKeyName(const std::string& utf8, std::string& stored, bool& compressed)
{
    std::string utf16 = ozTestHive::Utf16le(utf8);
    size_t units = utf16.size() / 2;
    if (units == 0 || units > kMaxKeyNameUnits || utf8.find('\\') != std::string::npos ||
        utf8.find('\0') != std::string::npos)
        return false;
    compressed = true;
    for (size_t i = 0; i < units; ++i)
        compressed = compressed && utf16[2 * i + 1] == '\0';
    stored.clear();
    if (!compressed) {
        stored = utf16;
        return true;
    }
    for (size_t i = 0; i < units; ++i)
        stored.push_back(utf16[2 * i]);
    return true;
}

// Readers walk a bin from cell to cell by their sizes, so the root key node, its security cell
// and one free cell for the rest of the bin are laid out back to back.
std::string EmptyHive(const std::string& storedName, bool compressedName)
{
    const uint64_t now = FileTimeNow();
    std::string file(kBaseBlockSize + kBinSize, '\0');

    const size_t keyCell = kBinHeaderSize;
    const size_t keyCellSize = CellSize(kKeyNodeNameOffset + storedName.size());
    const std::string descriptor = RootSecurityDescriptor();
    const size_t securityCell = keyCell + keyCellSize;
    const size_t securityCellSize = CellSize(kSecurityDescriptorOffset + descriptor.size());
    const size_t freeCell = securityCell + securityCellSize;

    // Base block. Equal sequence numbers mark the hive as fully written; version 1.5 is the
    // first with the hash-leaf ("lh") sub key lists libhivex writes. The file name field is
    // left empty: it only records where a loaded hive came from.
    std::memcpy(&file[0x00], "regf", 4);
    PutU32(file, 0x04, 1);
    PutU32(file, 0x08, 1);
    PutU64(file, 0x0C, now);
    PutU32(file, 0x14, 1);  // major version
    PutU32(file, 0x18, 5);  // minor version
    PutU32(file, 0x1C, 0);  // primary file, not a log
    PutU32(file, 0x20, 1);  // direct memory load
    PutU32(file, 0x24, static_cast<uint32_t>(keyCell));
    PutU32(file, 0x28, static_cast<uint32_t>(kBinSize));  // hive bins data size
    PutU32(file, 0x2C, 1);                                // clustering factor
    PutU32(file, kChecksumOffset, BaseBlockChecksum(file));

    std::string bin(kBinSize, '\0');
    std::memcpy(&bin[0x00], "hbin", 4);
    PutU32(bin, 0x04, 0);  // offset of this bin
    PutU32(bin, 0x08, static_cast<uint32_t>(kBinSize));
    PutU64(bin, 0x14, now);

    // Allocated cells carry their size negated.
    PutU32(bin, keyCell, static_cast<uint32_t>(-static_cast<int32_t>(keyCellSize)));
    const size_t key = keyCell + 4;
    std::memcpy(&bin[key], "nk", 2);
    uint16_t flags = kKeyHiveEntry | kKeyNoDelete;
    if (compressedName)
        flags |= kKeyCompressedName;
    PutU16(bin, key + 0x02, flags);
    PutU64(bin, key + 0x04, now);
    PutU32(bin, key + 0x10, kNoCell);  // parent: the root has none
    PutU32(bin, key + 0x1C, kNoCell);  // sub key list
    PutU32(bin, key + 0x20, kNoCell);  // volatile sub key list
    PutU32(bin, key + 0x28, kNoCell);  // value list
    PutU32(bin, key + 0x2C, static_cast<uint32_t>(securityCell));
    PutU32(bin, key + 0x30, kNoCell);  // class name
    PutU16(bin, key + 0x48, static_cast<uint16_t>(storedName.size()));
    std::memcpy(&bin[key + kKeyNodeNameOffset], storedName.data(), storedName.size());

    // Security cells form a circular list; this is the only one, used by the root only.
    PutU32(bin, securityCell, static_cast<uint32_t>(-static_cast<int32_t>(securityCellSize)));
    const size_t security = securityCell + 4;
    std::memcpy(&bin[security], "sk", 2);
    PutU32(bin, security + 0x04, static_cast<uint32_t>(securityCell));  // next
    PutU32(bin, security + 0x08, static_cast<uint32_t>(securityCell));  // previous
    PutU32(bin, security + 0x0C, 1);                                    // reference count
    PutU32(bin, security + 0x10, static_cast<uint32_t>(descriptor.size()));
    std::memcpy(&bin[security + kSecurityDescriptorOffset], descriptor.data(), descriptor.size());

    PutU32(bin, freeCell, static_cast<uint32_t>(kBinSize - freeCell));

    file.replace(kBaseBlockSize, kBinSize, bin);
    return file;
}

}  // namespace

std::string ozTestHive::Utf16le(const std::string& utf8)
{
    std::string out;
    for (char16_t unit : ozDecodeUtf8(utf8))
        AppendU16(out, unit);
    return out;
}

bool ozTestHive::WriteEmpty(const std::string& path, const std::string& rootName)
{
    std::string storedName;
    bool compressed = false;
    if (!EncodeKeyName(rootName, storedName, compressed))
        return false;
    const std::string file = EmptyHive(storedName, compressed);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(file.data(), static_cast<std::streamsize>(file.size()));
    out.close();
    return !out.fail();
}

ozTestHive::ozTestHive(const std::string& path, const std::string& rootName)
{
    if (!WriteEmpty(path, rootName))
        return;
    hive_ = hivex_open(path.c_str(), HIVEX_OPEN_WRITE);
}

ozTestHive::~ozTestHive()
{
    if (hive_ != nullptr)
        hivex_close(hive_);
}

size_t ozTestHive::FindOrCreateKey(const std::string& keyPath)
{
    if (hive_ == nullptr)
        return 0;
    size_t node = hivex_root(hive_);
    if (keyPath.empty())
        return node;
    std::string foldedPath;
    size_t start = 0;
    while (node != 0) {
        const size_t end = std::min(keyPath.find('\\', start), keyPath.size());
        const std::string name = keyPath.substr(start, end - start);
        if (name.empty() || name.find('\0') != std::string::npos)
            return 0;
        if (start != 0)
            foldedPath += '\\';
        foldedPath += ozAsciiLowerCased(name);
        // Every key in the hive was made here, so a path missing from the map is missing
        // from the hive and nothing needs looking up there.
        auto known = nodes_.find(foldedPath);
        if (known != nodes_.end()) {
            node = known->second;
        } else {
            node = hivex_node_add_child(hive_, node, name.c_str());
            if (node != 0)
                nodes_.emplace(foldedPath, node);
        }
        if (end == keyPath.size())
            break;
        start = end + 1;
    }
    return node;
}

bool ozTestHive::AddKey(const std::string& keyPath)
{
    return FindOrCreateKey(keyPath) != 0;
}

bool ozTestHive::SetValue(const std::string& keyPath, const std::string& name, unsigned type,
                          const std::string& bytes)
{
    if (name.find('\0') != std::string::npos)
        return false;
    const size_t node = FindOrCreateKey(keyPath);
    if (node == 0)
        return false;
    // libhivex takes mutable pointers but only reads through them.
    std::string key = name;
    std::string data = bytes;
    hive_set_value value{};
    value.key = key.data();
    value.len = data.size();
    value.value = data.data();
    // The stored type is any 32-bit code, most of which hive_type does not enumerate; copying
    // the bytes avoids forming an out-of-range enum value.
    static_assert(sizeof(value.t) == sizeof(uint32_t));
    const uint32_t typeCode = type;
    std::memcpy(&value.t, &typeCode, sizeof typeCode);
    return hivex_node_set_value(hive_, node, &value, 0) == 0;
}

bool ozTestHive::SetString(const std::string& keyPath, const std::string& name,
                           const std::string& text, unsigned type)
{
    std::string bytes = Utf16le(text);
    bytes.append(2, '\0');
    return SetValue(keyPath, name, type, bytes);
}

bool ozTestHive::SetMultiString(const std::string& keyPath, const std::string& name,
                                const std::vector<std::string>& strings)
{
    std::string bytes;
    for (const std::string& text : strings) {
        bytes += Utf16le(text);
        bytes.append(2, '\0');
    }
    bytes.append(2, '\0');
    return SetValue(keyPath, name, 7, bytes);
}

bool ozTestHive::SetDword(const std::string& keyPath, const std::string& name, uint32_t number)
{
    std::string bytes(4, '\0');
    PutU32(bytes, 0, number);
    return SetValue(keyPath, name, 4, bytes);
}

bool ozTestHive::Commit()
{
    return hive_ != nullptr && hivex_commit(hive_, nullptr, 0) == 0;
}

bool ozTestHive::ReplaceInFile(const std::string& path, const std::string& from,
                               const std::string& to)
{
    if (from.empty() || from.size() != to.size())
        return false;
    std::string bytes;
    {
        std::ifstream in(path, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(in), {});
    }
    size_t replaced = 0;
    for (size_t at = bytes.find(from); at != std::string::npos;
         at = bytes.find(from, at + 1), ++replaced)
        bytes.replace(at, from.size(), to);
    if (replaced == 0)
        return false;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    return !out.fail();
}
