// The byte layout of a Registry.pol file: the header "PReg" with version 1 (both 32-bit
// little-endian words), then records "[key;name;type;size;data]" whose brackets and semicolons
// are UTF-16LE characters, whose key path and value name are zero-terminated UTF-16LE text and
// whose type and size are 32-bit little-endian numbers, followed by size bytes of data. The
// layout knows nothing of the registry model; ozPolMapping gives the records their meaning.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ozStatus.h"

// One record as it stands in the file.
struct ozPolRecord {
    std::u16string key;   // without its terminator
    std::u16string name;  // without its terminator
    std::uint32_t type = 0;
    std::string data;  // the data bytes as stored (text types: UTF-16LE)
    // Where the record's "[" stands in the file; 0 for a record made in memory.
    std::size_t offset = 0;
};

// The registry types whose data is UTF-16 text in the file and narrow text in the model:
// string, expandable string, multi-string.
bool ozPolIsTextType(std::uint32_t type);

// A failure found at `offset` in a file: its message reads "byte OFFSET: WHAT".
ozStatus ozPolErrorAt(std::size_t offset, const std::string& what);

// Hands every record of a whole file's bytes to visit, in file order; the record object is
// reused from one call to the next, so that reading allocates little. Fails, at the offset
// (ozPolErrorAt), for a file that is not a version 1 Registry.pol file: a bad or truncated
// header, a missing bracket or semicolon, a key path or value name without its terminator, a
// size beyond the end of the file, or text data (ozPolIsTextType) of an odd number of bytes;
// the records before the faulty one have been visited. Fails as well as visit fails. Never
// reads outside bytes; allocates no more than the file's size for any record.
using ozPolVisitor = std::function<ozStatus(const ozPolRecord& record)>;
ozStatus ozForEachPolRecord(std::string_view bytes, const ozPolVisitor& visit);
// The records of a whole file, read as ozForEachPolRecord reads them. On failure records holds
// the records before the faulty one.
ozStatus ozReadPolRecords(std::string_view bytes, std::vector<ozPolRecord>& records);

// The eight header bytes.
std::string ozPolHeader();
// Appends the bytes of one record (key path and value name with their terminators) to out.
// The data must be shorter than 4 GiB; the caller checks.
void ozAppendPolRecord(std::string& out, const ozPolRecord& record);
