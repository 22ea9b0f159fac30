#include "ozTestHive.h"

#include <hivex.h>

#include <algorithm>
#include <cstring>
#include <fstream>

#include "platform/ozAsciiCase.h"
#include "platform/posix/ozUtf8.h"
#include "tests/support/ozTestFiles.h"

namespace {

// The file is a 4 KiB base block followed by hive bins; every offset stored in a cell is
// relative to the start of the first bin, not of the file.
constexpr size_t kBaseBlockSize = 4096;
constexpr size_t kBinSize = 4096;
constexpr size_t kBinHeaderSize = 32;
constexpr size_t kChecksumOffset = 0x1FC;
constexpr uint32_t kNoCell = 0xFFFFFFFF;

// Key node flags: the root key is marked as the hive's entry and as undeletable, and a name of
// Latin-1 characters is stored one byte per character ("compressed") instead of in UTF-16LE.
constexpr uint16_t kKeyHiveEntry = 0x0004;
constexpr uint16_t kKeyNoDelete = 0x0008;
constexpr uint16_t kKeyCompressedName = 0x0020;
constexpr size_t kKeyNodeNameOffset = 0x4C;
constexpr size_t kSecurityDescriptorOffset = 0x14;

// Little-endian numbers of `width` bytes, as every field of the format stores them.
void Put(std::string& bytes, size_t at, uint64_t number, size_t width)
{
    for (size_t i = 0; i < width; ++i)
        bytes[at + i] = static_cast<char>(number >> (8 * i));
}

// Cells are 8-byte aligned, their 4-byte size field included.
size_t CellSize(size_t contentSize)
{
    return (4 + contentSize + 7) & ~size_t(7);
}

// Readers reject a base block whose checksum is wrong: the XOR of its first 127 dwords, with
// the results 0 and 0xFFFFFFFF, which are never stored, replaced by 1 and 0xFFFFFFFE.
uint32_t BaseBlockChecksum(const std::string& baseBlock)
{
    uint32_t checksum = 0;
    for (size_t at = 0; at < kChecksumOffset; ++at)
        checksum ^= uint32_t(static_cast<unsigned char>(baseBlock[at])) << (8 * (at % 4));
    if (checksum == 0xFFFFFFFF)
        return 0xFFFFFFFE;
    if (checksum == 0)
        return 1;
    return checksum;
}

// Readers walk a bin from cell to cell by their sizes, so the root key node, its security cell
// and one free cell for the rest of the bin are laid out back to back.
std::string EmptyHive()
{
    const std::string storedName = "ROOT";  // Latin-1: stored one byte per character
    std::string file(kBaseBlockSize + kBinSize, '\0');

    const size_t keyCell = kBinHeaderSize;
    const size_t keyCellSize = CellSize(kKeyNodeNameOffset + storedName.size());
    // A self-relative descriptor without owner, group or access list: nothing here checks
    // access, and libhivex gives each new key its parent's descriptor.
    std::string descriptor(20, '\0');
    descriptor[0] = 1;  // revision
    Put(descriptor, 2, 0x8000, 2);
    const size_t securityCell = keyCell + keyCellSize;
    const size_t securityCellSize = CellSize(kSecurityDescriptorOffset + descriptor.size());
    const size_t freeCell = securityCell + securityCellSize;

    // Base block. Equal sequence numbers mark the hive as fully written; version 1.5 is the
    // first with the hash-leaf ("lh") sub key lists libhivex writes. Timestamps and the file
    // name stay zero (a primary file, not a log): readers only show them.
    std::memcpy(&file[0x00], "regf", 4);
    Put(file, 0x04, 1, 4);
    Put(file, 0x08, 1, 4);
    Put(file, 0x14, 1, 4);  // major version
    Put(file, 0x18, 5, 4);  // minor version
    Put(file, 0x20, 1, 4);  // direct memory load
    Put(file, 0x24, static_cast<uint32_t>(keyCell), 4);
    Put(file, 0x28, static_cast<uint32_t>(kBinSize), 4);  // hive bins data size
    Put(file, 0x2C, 1, 4);                                // clustering factor
    Put(file, kChecksumOffset, BaseBlockChecksum(file), 4);

    std::string bin(kBinSize, '\0');
    std::memcpy(&bin[0x00], "hbin", 4);
    Put(bin, 0x08, static_cast<uint32_t>(kBinSize), 4);

    // Allocated cells carry their size negated.
    Put(bin, keyCell, static_cast<uint32_t>(-static_cast<int32_t>(keyCellSize)), 4);
    const size_t key = keyCell + 4;
    std::memcpy(&bin[key], "nk", 2);
    Put(bin, key + 0x02, kKeyHiveEntry | kKeyNoDelete | kKeyCompressedName, 2);
    Put(bin, key + 0x10, kNoCell, 4);  // parent: the root has none
    Put(bin, key + 0x1C, kNoCell, 4);  // sub key list
    Put(bin, key + 0x20, kNoCell, 4);  // volatile sub key list
    Put(bin, key + 0x28, kNoCell, 4);  // value list
    Put(bin, key + 0x2C, static_cast<uint32_t>(securityCell), 4);
    Put(bin, key + 0x30, kNoCell, 4);  // class name
    Put(bin, key + 0x48, static_cast<uint16_t>(storedName.size()), 2);
    std::memcpy(&bin[key + kKeyNodeNameOffset], storedName.data(), storedName.size());

    // Security cells form a circular list; this is the only one, used by the root only.
    Put(bin, securityCell, static_cast<uint32_t>(-static_cast<int32_t>(securityCellSize)), 4);
    const size_t security = securityCell + 4;
    std::memcpy(&bin[security], "sk", 2);
    Put(bin, security + 0x04, static_cast<uint32_t>(securityCell), 4);  // next
    Put(bin, security + 0x08, static_cast<uint32_t>(securityCell), 4);  // previous
    Put(bin, security + 0x0C, 1, 4);                                    // reference count
    Put(bin, security + 0x10, static_cast<uint32_t>(descriptor.size()), 4);
    std::memcpy(&bin[security + kSecurityDescriptorOffset], descriptor.data(), descriptor.size());

    Put(bin, freeCell, static_cast<uint32_t>(kBinSize - freeCell), 4);

    file.replace(kBaseBlockSize, kBinSize, bin);
    return file;
}

}  // namespace

std::string ozTestHive::Utf16le(const std::string& utf8)
{
    std::string out;
    for (char16_t unit : ozDecodeUtf8(utf8))
        out += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    return out;
}

ozTestHive::ozTestHive(const std::string& path)
{
    const std::string file = EmptyHive();
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(file.data(), static_cast<std::streamsize>(file.size()));
    out.close();
    if (!out.fail())
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
    Put(bytes, 0, number, 4);
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
    std::string bytes = ozReadTestFile(path);
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
