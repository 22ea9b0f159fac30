// The registry functions over offline hive files, read with libhivex. Hive files are opened
// read-only and kept open while a key of theirs is open; nothing here ever writes a hive.
#include <dirent.h>
#include <hivex.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "ozUtf8.h"
#include "platform/ozAsciiCase.h"
#include "platform/ozRegistryApi.h"

namespace {

// Frees what libhivex hands over with malloc.
struct FreeDeleter {
    void operator()(void* p) const { std::free(p); }
};
template <class T>
using Malloced = std::unique_ptr<T, FreeDeleter>;

bool IsDirectory(const std::string& path)
{
    struct stat info;
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool IsRegularFile(const std::string& path)
{
    struct stat info;
    return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

// The entry of `folder` named `name` without regard to case ("" when there is none): Windows
// installations copied to a case-sensitive file system keep their mixed-case names.
std::string FindIgnoringCase(const std::string& folder, const std::string& name)
{
    std::string exact = folder + "/" + name;
    struct stat info;
    if (stat(exact.c_str(), &info) == 0)
        return exact;
    std::unique_ptr<DIR, int (*)(DIR*)> dir(opendir(folder.c_str()), closedir);
    if (dir == nullptr)
        return "";
    std::string wanted = ozAsciiLowerCased(name);
    while (dirent* entry = readdir(dir.get())) {
        if (ozAsciiLowerCased(entry->d_name) == wanted)
            return folder + "/" + entry->d_name;
    }
    return "";
}

std::string FindPathIgnoringCase(std::string folder, const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        folder = FindIgnoringCase(folder, name);
        if (folder.empty())
            return "";
    }
    return folder;
}

LONG ErrorOfFailedOpen(int error)
{
    switch (error) {
        case EACCES:
        case EPERM:
            return ERROR_ACCESS_DENIED;
        case ENOMEM:
            return ERROR_NOT_ENOUGH_MEMORY;
        case ENOTSUP:
        case EINVAL:
        case EFAULT:
        case ERANGE:
            return ERROR_BADDB;
        default:
            return ERROR_CANTOPEN;
    }
}

// Registry keys nest at most this deep.
constexpr size_t MaxDepth = 512;

// One hive file, open read-only.
class Hive {
public:
    Hive(hive_h* handle, bool isSystemHive, size_t fileSize)
        : m_handle(handle), m_isSystem(isSystemHive), m_fileSize(fileSize)
    {
    }
    Hive(const Hive&) = delete;
    Hive& operator=(const Hive&) = delete;
    ~Hive() { hivex_close(m_handle); }

    hive_h* Handle() const { return m_handle; }
    // The SYSTEM hive, whose root offers CurrentControlSet as an alias.
    bool IsSystem() const { return m_isSystem; }
    // No datum of the hive can be longer than its file.
    size_t FileSize() const { return m_fileSize; }

private:
    hive_h* m_handle;
    bool m_isSystem;
    size_t m_fileSize;
};

// A hive file mounted under a name: below HKEY_LOCAL_MACHINE or HKEY_USERS.
struct Mount {
    std::string name;
    std::string file;
};

// The hive files of one Windows installation (or of a folder of hive files).
class Machine {
public:
    static LONG Find(const std::string& folder, const std::string& user,
                     std::shared_ptr<Machine>& machine);

    const std::vector<Mount>& MachineHives() const { return m_machineHives; }
    const std::vector<Mount>& UserHives() const { return m_userHives; }
    const std::string& CurrentUserHive() const { return m_currentUserHive; }
    LONG OpenHive(const std::string& file, std::shared_ptr<Hive>& hive);

private:
    std::vector<Mount> m_machineHives;
    std::vector<Mount> m_userHives;
    std::string m_currentUserHive;
    std::map<std::string, std::weak_ptr<Hive>> m_openHives;
};

LONG Machine::Find(const std::string& folder, const std::string& user,
                   std::shared_ptr<Machine>& machine)
{
    if (!IsDirectory(folder))
        return ERROR_BAD_NETPATH;
    auto found = std::make_shared<Machine>();
    std::string config = FindPathIgnoringCase(folder, {"Windows", "System32", "config"});
    if (config.empty())
        config = folder;
    for (const char* name : {"SAM", "SECURITY", "SOFTWARE", "SYSTEM"}) {
        std::string file = FindIgnoringCase(config, name);
        if (!file.empty() && IsRegularFile(file))
            found->m_machineHives.push_back({name, file});
    }
    std::string defaultHive = FindIgnoringCase(config, "DEFAULT");
    if (!defaultHive.empty() && IsRegularFile(defaultHive))
        found->m_userHives.push_back({".DEFAULT", defaultHive});
    for (const char* profiles : {"Users", "Documents and Settings"}) {
        std::string profileFolder = FindIgnoringCase(folder, profiles);
        std::unique_ptr<DIR, int (*)(DIR*)> dir(
            profileFolder.empty() ? nullptr : opendir(profileFolder.c_str()), closedir);
        while (dir != nullptr) {
            dirent* entry = readdir(dir.get());
            if (entry == nullptr)
                break;
            std::string name = entry->d_name;
            if (name == "." || name == "..")
                continue;
            std::string hive = FindIgnoringCase(profileFolder + "/" + name, "NTUSER.DAT");
            if (!hive.empty() && IsRegularFile(hive))
                found->m_userHives.push_back({name, hive});
        }
    }

    std::string ownHive = FindIgnoringCase(folder, "NTUSER.DAT");
    if (!user.empty()) {
        for (const Mount& mount : found->m_userHives)
            if (ozAsciiLowerCased(mount.name) == ozAsciiLowerCased(user))
                found->m_currentUserHive = mount.file;
    } else if (!ownHive.empty() && IsRegularFile(ownHive)) {
        found->m_currentUserHive = ownHive;
    } else if (found->m_userHives.size() == 1 ||
               (found->m_userHives.size() == 2 && found->m_userHives[0].name == ".DEFAULT")) {
        found->m_currentUserHive = found->m_userHives.back().file;
    }
    machine = std::move(found);
    return ERROR_SUCCESS;
}

LONG Machine::OpenHive(const std::string& file, std::shared_ptr<Hive>& hive)
{
    hive = m_openHives[file].lock();
    if (hive != nullptr)
        return ERROR_SUCCESS;
    errno = 0;
    hive_h* handle = hivex_open(file.c_str(), 0);
    if (handle == nullptr)
        return ErrorOfFailedOpen(errno);
    bool isSystem = false;
    for (const Mount& mount : m_machineHives)
        isSystem = isSystem || (mount.name == "SYSTEM" && mount.file == file);
    struct stat info;
    size_t fileSize = stat(file.c_str(), &info) == 0 ? static_cast<size_t>(info.st_size) : 0;
    hive = std::make_shared<Hive>(handle, isSystem, fileSize);
    m_openHives[file] = hive;
    return ERROR_SUCCESS;
}

// A name as libhivex hands it over (malloced, freed here) with its length in bytes: the whole
// name, zero characters included, as Windows keeps it. False when libhivex failed.
bool WholeName(char* given, size_t length, std::string& name)
{
    Malloced<char> owned(given);
    if (owned == nullptr || (length == 0 && owned.get()[0] != '\0'))
        return false;
    name.assign(owned.get(), length);
    return true;
}

// An open key: either a list of mounted hives (HKEY_LOCAL_MACHINE, HKEY_USERS) or a node of a
// hive. Its sub keys and values are read on first use and kept, so that enumerating them and
// opening them by name costs constant time each.
struct OpenKey {
    std::shared_ptr<Machine> machine;
    const std::vector<Mount>* mounts = nullptr;
    std::shared_ptr<Hive> hive;
    hive_node_h node = 0;
    // How many keys lie between the hive's root and this key.
    size_t depth = 0;

    bool subKeysRead = false;
    std::vector<std::string> subKeyNames;
    std::vector<hive_node_h> subKeyNodes;
    std::unordered_map<std::string, size_t> subKeyByName;

    bool valuesRead = false;
    std::vector<std::string> valueNames;
    std::vector<hive_value_h> valueHandles;

    LONG ReadSubKeys();
    LONG ReadValues();
    LONG OpenSubKey(const std::string& name, OpenKey& child);
};

LONG OpenKey::ReadSubKeys()
{
    if (subKeysRead)
        return ERROR_SUCCESS;
    if (mounts != nullptr) {
        for (const Mount& mount : *mounts)
            subKeyNames.push_back(mount.name);
    } else {
        errno = 0;
        Malloced<hive_node_h> children(hivex_node_children(hive->Handle(), node));
        if (children == nullptr)
            return ERROR_REGISTRY_CORRUPT;
        std::unordered_set<hive_node_h> listed;
        for (hive_node_h* child = children.get(); *child != 0; ++child) {
            if (!listed.insert(*child).second)
                return ERROR_REGISTRY_CORRUPT;  // a key listed twice
            std::string name;
            // A key name is never empty and never holds a backslash; opening such a name
            // would reach another key (or the key itself) instead.
            if (!WholeName(hivex_node_name(hive->Handle(), *child),
                           hivex_node_name_len(hive->Handle(), *child), name) ||
                name.empty() || name.find('\\') != std::string::npos)
                return ERROR_REGISTRY_CORRUPT;
            subKeyNames.push_back(std::move(name));
            subKeyNodes.push_back(*child);
        }
    }
    for (size_t i = 0; i < subKeyNames.size(); ++i)
        subKeyByName.emplace(ozAsciiLowerCased(subKeyNames[i]), i);
    subKeysRead = true;
    return ERROR_SUCCESS;
}

LONG OpenKey::ReadValues()
{
    if (valuesRead)
        return ERROR_SUCCESS;
    if (mounts == nullptr) {
        Malloced<hive_value_h> values(hivex_node_values(hive->Handle(), node));
        if (values == nullptr)
            return ERROR_REGISTRY_CORRUPT;
        for (hive_value_h* value = values.get(); *value != 0; ++value) {
            std::string name;
            if (!WholeName(hivex_value_key(hive->Handle(), *value),
                           hivex_value_key_len(hive->Handle(), *value), name))
                return ERROR_REGISTRY_CORRUPT;
            valueNames.push_back(std::move(name));
            valueHandles.push_back(*value);
        }
    }
    valuesRead = true;
    return ERROR_SUCCESS;
}

LONG OpenKey::OpenSubKey(const std::string& name, OpenKey& child)
{
    if (LONG error = ReadSubKeys(); error != ERROR_SUCCESS)
        return error;
    child = OpenKey{};
    child.machine = machine;
    auto found = subKeyByName.find(ozAsciiLowerCased(name));
    if (found == subKeyByName.end()) {
        // Offline, the SYSTEM hive has only numbered control sets; the current one is named
        // by Select\Current.
        if (mounts == nullptr && hive->IsSystem() && node == hivex_root(hive->Handle()) &&
            ozAsciiLowerCased(name) == "currentcontrolset") {
            OpenKey select;
            if (OpenSubKey("Select", select) != ERROR_SUCCESS)
                return ERROR_FILE_NOT_FOUND;
            hive_value_h current = hivex_node_get_value(hive->Handle(), select.node, "Current");
            if (current == 0)
                return ERROR_FILE_NOT_FOUND;
            char controlSet[32];
            std::snprintf(controlSet, sizeof controlSet, "ControlSet%03u",
                          static_cast<unsigned>(hivex_value_dword(hive->Handle(), current)));
            return OpenSubKey(controlSet, child);
        }
        return ERROR_FILE_NOT_FOUND;
    }
    if (mounts != nullptr) {
        LONG error = machine->OpenHive((*mounts)[found->second].file, child.hive);
        if (error != ERROR_SUCCESS)
            return error;
        child.node = hivex_root(child.hive->Handle());
        return child.node != 0 ? ERROR_SUCCESS : ERROR_BADDB;
    }
    // Every key of a sound hive names its parent. A damaged one can list a key below itself or
    // below several parents, which would make walks over it endless or exponential.
    hive_node_h childNode = subKeyNodes[found->second];
    if (depth + 1 >= MaxDepth || hivex_node_parent(hive->Handle(), childNode) != node)
        return ERROR_REGISTRY_CORRUPT;
    child.hive = hive;
    child.node = childNode;
    child.depth = depth + 1;
    return ERROR_SUCCESS;
}

// Opens every component of path below key in turn; the sub keys key has read stay with it
// for the next open. Empty components (doubled or trailing backslashes) are passed over.
LONG OpenPath(OpenKey& key, const std::string& path, OpenKey& result)
{
    OpenKey* current = &key;
    OpenKey child;
    size_t start = 0;
    while (start <= path.size()) {
        size_t end = path.find('\\', start);
        if (end == std::string::npos)
            end = path.size();
        if (end > start) {
            OpenKey next;
            if (LONG error = current->OpenSubKey(path.substr(start, end - start), next);
                error != ERROR_SUCCESS)
                return error;
            child = std::move(next);
            current = &child;
        }
        start = end + 1;
    }
    result = OpenKey{};
    result.machine = current->machine;
    result.mounts = current->mounts;
    result.hive = current->hive;
    result.node = current->node;
    result.depth = current->depth;
    return ERROR_SUCCESS;
}

// Process-wide state: the local machine's folder and user, and the handles given out.
struct State {
    std::mutex lock;
    bool localChosen = false;
    std::string localFolder;
    std::string localUser;
    std::map<std::pair<std::string, std::string>, std::weak_ptr<Machine>> machines;
    std::unordered_set<OpenKey*> handles;
};

State& TheState()
{
    static State state;
    return state;
}

bool IsPredefined(HKEY key)
{
    unsigned int number = ozRootNumber(key);
    return number <= 6 && ozRootHandle(number) == key;
}

LONG FindMachine(const char* folder, std::shared_ptr<Machine>& machine)
{
    State& state = TheState();
    std::string user;
    std::string path;
    if (folder != nullptr && *folder != '\0') {
        path = folder;
        while (path.size() > 2 && path.compare(0, 2, "\\\\") == 0)
            path.erase(0, 2);  // a machine name written the Windows way
    } else {
        if (!state.localChosen) {
            const char* fromEnvironment = std::getenv("OZADM_REGISTRY");
            const char* userFromEnvironment = std::getenv("OZADM_REGISTRY_USER");
            state.localFolder = fromEnvironment != nullptr ? fromEnvironment : "";
            state.localUser = userFromEnvironment != nullptr ? userFromEnvironment : "";
        }
        if (state.localFolder.empty())
            return ERROR_CANTOPEN;
        path = state.localFolder;
        user = state.localUser;
    }
    auto& cached = state.machines[{path, user}];
    machine = cached.lock();
    if (machine != nullptr)
        return ERROR_SUCCESS;
    LONG error = Machine::Find(path, user, machine);
    if (error == ERROR_SUCCESS)
        cached = machine;
    return error;
}

LONG OpenRoot(const std::shared_ptr<Machine>& machine, HKEY root, OpenKey& key)
{
    key = OpenKey{};
    key.machine = machine;
    auto openHiveRoot = [&](const std::string& file) {
        if (file.empty())
            return static_cast<LONG>(ERROR_CANTOPEN);
        if (LONG error = machine->OpenHive(file, key.hive); error != ERROR_SUCCESS)
            return error;
        key.node = hivex_root(key.hive->Handle());
        return key.node != 0 ? ERROR_SUCCESS : static_cast<LONG>(ERROR_BADDB);
    };
    OpenKey machineKey;
    machineKey.machine = machine;
    machineKey.mounts = &machine->MachineHives();
    switch (ozRootNumber(root)) {
        case 0:  // HKEY_CLASSES_ROOT
            return OpenPath(machineKey, "SOFTWARE\\Classes", key);
        case 1:  // HKEY_CURRENT_USER
            return openHiveRoot(machine->CurrentUserHive());
        case 2:  // HKEY_LOCAL_MACHINE
            key = machineKey;
            return ERROR_SUCCESS;
        case 3:  // HKEY_USERS
            key.mounts = &machine->UserHives();
            return ERROR_SUCCESS;
        case 5:  // HKEY_CURRENT_CONFIG
            return OpenPath(machineKey, "SYSTEM\\CurrentControlSet\\Hardware Profiles\\Current",
                            key);
        default:
            return ERROR_FILE_NOT_FOUND;
    }
}

// The open key behind a handle; a predefined key is opened on the local machine into
// `scratch`. Null with *error set for an unknown handle.
OpenKey* Resolve(HKEY handle, OpenKey& scratch, LONG* error)
{
    if (IsPredefined(handle)) {
        std::shared_ptr<Machine> machine;
        *error = FindMachine(nullptr, machine);
        if (*error == ERROR_SUCCESS)
            *error = OpenRoot(machine, handle, scratch);
        return *error == ERROR_SUCCESS ? &scratch : nullptr;
    }
    auto* key = reinterpret_cast<OpenKey*>(handle);
    if (TheState().handles.count(key) == 0) {
        *error = ERROR_INVALID_HANDLE;
        return nullptr;
    }
    *error = ERROR_SUCCESS;
    return key;
}

HKEY Keep(OpenKey&& key)
{
    auto* kept = new OpenKey(std::move(key));
    TheState().handles.insert(kept);
    return reinterpret_cast<HKEY>(kept);
}

// The registry type code a hive stores; read through its bytes, since a hive may hold codes
// outside libhivex's enumeration, which C++ must not load as that enumeration.
DWORD TypeCode(const hive_type& type)
{
    std::uint32_t code = 0;
    static_assert(sizeof code == sizeof type);
    std::memcpy(&code, &type, sizeof code);
    return code;
}

bool IsStringType(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// UTF-16LE data to UTF-8, unit by unit: zero units stay, no terminator is added where none
// was stored, and an odd last byte, half a unit, follows the text as it is.
std::string NarrowText(const char* bytes, size_t size)
{
    std::u16string units(size / 2, u'\0');
    for (size_t i = 0; i < units.size(); ++i)
        units[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * i]) |
                                         static_cast<unsigned char>(bytes[2 * i + 1]) << 8);
    std::string text = ozEncodeUtf8(units);
    if (size % 2 != 0)
        text.push_back(bytes[size - 1]);
    return text;
}

// When node (of key's hive) was last written; zero for the lists of mounted hives.
FILETIME LastWritten(const OpenKey& key, hive_node_h node)
{
    std::int64_t stamp = key.mounts == nullptr ? hivex_node_timestamp(key.hive->Handle(), node) : 0;
    return FILETIME{static_cast<DWORD>(stamp), static_cast<DWORD>(stamp >> 32)};
}

// Runs a registry function, turning a failed allocation into its error code.
template <class Function>
LONG Guarded(Function function)
{
    try {
        std::lock_guard<std::mutex> guard(TheState().lock);
        return function();
    } catch (const std::bad_alloc&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

// Runs function on the open key behind hKey (a predefined key is opened on the local
// machine), guarded as Guarded does; an unknown handle gives its error without the call.
template <class Function>
LONG OnKey(HKEY hKey, Function function)
{
    return Guarded([&] {
        OpenKey scratch;
        LONG error = ERROR_SUCCESS;
        OpenKey* key = Resolve(hKey, scratch, &error);
        return key != nullptr ? static_cast<LONG>(function(key)) : error;
    });
}

}  // namespace

bool ozRegistryUseLocalMachine(const char* folder, const char* user)
{
    return Guarded([&] {
               State& state = TheState();
               state.localChosen = folder != nullptr;
               state.localFolder = folder != nullptr ? folder : "";
               state.localUser = user != nullptr ? user : "";
               return ERROR_SUCCESS;
           }) == ERROR_SUCCESS;
}

LONG RegConnectRegistryA(const char* machineName, HKEY hKey, HKEY* phkResult)
{
    if (phkResult == nullptr || !IsPredefined(hKey))
        return ERROR_INVALID_PARAMETER;
    return Guarded([&] {
        std::shared_ptr<Machine> machine;
        LONG error = FindMachine(machineName, machine);
        OpenKey root;
        if (error == ERROR_SUCCESS)
            error = OpenRoot(machine, hKey, root);
        if (error == ERROR_SUCCESS)
            *phkResult = Keep(std::move(root));
        return error;
    });
}

LONG RegOpenKeyExA(HKEY hKey, const char* lpSubKey, DWORD, REGSAM samDesired, HKEY* phkResult)
{
    if (phkResult == nullptr)
        return ERROR_INVALID_PARAMETER;
    // Hives are only ever read.
    const REGSAM writeAccess = KEY_SET_VALUE | KEY_CREATE_SUB_KEY | KEY_CREATE_LINK | 0x10000 |
                               0x40000 | 0x80000;  // DELETE, WRITE_DAC, WRITE_OWNER
    if ((samDesired & writeAccess) != 0)
        return ERROR_ACCESS_DENIED;
    return OnKey(hKey, [&](OpenKey* base) {
        OpenKey opened;
        LONG error = OpenPath(*base, lpSubKey != nullptr ? lpSubKey : "", opened);
        if (error == ERROR_SUCCESS)
            *phkResult = Keep(std::move(opened));
        return error;
    });
}

LONG RegQueryInfoKeyA(HKEY hKey, char* lpClass, DWORD* lpcchClass, DWORD*, DWORD* lpcSubKeys,
                      DWORD* lpcbMaxSubKeyLen, DWORD* lpcbMaxClassLen, DWORD* lpcValues,
                      DWORD* lpcbMaxValueNameLen, DWORD* lpcbMaxValueLen,
                      DWORD* lpcbSecurityDescriptor, FILETIME* lpftLastWriteTime)
{
    return OnKey(hKey, [&](OpenKey* key) {
        LONG error = key->ReadSubKeys();
        if (error == ERROR_SUCCESS)
            error = key->ReadValues();
        if (error != ERROR_SUCCESS)
            return error;
        size_t longestSubKey = 0;
        for (const std::string& name : key->subKeyNames)
            longestSubKey = std::max(longestSubKey, name.size());
        size_t longestValueName = 0;
        size_t longestData = 0;
        for (size_t i = 0; i < key->valueHandles.size(); ++i) {
            longestValueName = std::max(longestValueName, key->valueNames[i].size());
            hive_type type;
            size_t length = 0;
            if (hivex_value_type(key->hive->Handle(), key->valueHandles[i], &type, &length) != 0 ||
                length > key->hive->FileSize())
                return static_cast<LONG>(ERROR_REGISTRY_CORRUPT);
            // A UTF-16 unit becomes at most three narrow bytes; an odd last byte stays one.
            longestData = std::max(
                longestData, IsStringType(TypeCode(type)) ? length / 2 * 3 + length % 2 : length);
        }
        if (lpClass != nullptr && lpcchClass != nullptr && *lpcchClass > 0)
            lpClass[0] = '\0';
        if (lpcchClass != nullptr)
            *lpcchClass = 0;
        if (lpcSubKeys != nullptr)
            *lpcSubKeys = static_cast<DWORD>(key->subKeyNames.size());
        if (lpcbMaxSubKeyLen != nullptr)
            *lpcbMaxSubKeyLen = static_cast<DWORD>(longestSubKey);
        if (lpcbMaxClassLen != nullptr)
            *lpcbMaxClassLen = 0;
        if (lpcValues != nullptr)
            *lpcValues = static_cast<DWORD>(key->valueHandles.size());
        if (lpcbMaxValueNameLen != nullptr)
            *lpcbMaxValueNameLen = static_cast<DWORD>(longestValueName);
        if (lpcbMaxValueLen != nullptr)
            *lpcbMaxValueLen = static_cast<DWORD>(longestData);
        if (lpcbSecurityDescriptor != nullptr)
            *lpcbSecurityDescriptor = 0;
        if (lpftLastWriteTime != nullptr)
            *lpftLastWriteTime = LastWritten(*key, key->node);
        return static_cast<LONG>(ERROR_SUCCESS);
    });
}

LONG RegEnumKeyExA(HKEY hKey, DWORD dwIndex, char* lpName, DWORD* lpcchName, DWORD*, char* lpClass,
                   DWORD* lpcchClass, FILETIME* lpftLastWriteTime)
{
    if (lpName == nullptr || lpcchName == nullptr)
        return ERROR_INVALID_PARAMETER;
    return OnKey(hKey, [&](OpenKey* key) {
        if (LONG error = key->ReadSubKeys(); error != ERROR_SUCCESS)
            return error;
        if (dwIndex >= key->subKeyNames.size())
            return static_cast<LONG>(ERROR_NO_MORE_ITEMS);
        const std::string& name = key->subKeyNames[dwIndex];
        if (name.size() + 1 > *lpcchName)
            return static_cast<LONG>(ERROR_MORE_DATA);
        std::memcpy(lpName, name.c_str(), name.size() + 1);
        *lpcchName = static_cast<DWORD>(name.size());
        if (lpClass != nullptr && lpcchClass != nullptr && *lpcchClass > 0)
            lpClass[0] = '\0';
        if (lpcchClass != nullptr)
            *lpcchClass = 0;
        if (lpftLastWriteTime != nullptr)
            *lpftLastWriteTime =
                LastWritten(*key, key->mounts == nullptr ? key->subKeyNodes[dwIndex] : 0);
        return static_cast<LONG>(ERROR_SUCCESS);
    });
}

LONG RegEnumValueA(HKEY hKey, DWORD dwIndex, char* lpValueName, DWORD* lpcchValueName, DWORD*,
                   DWORD* lpType, BYTE* lpData, DWORD* lpcbData)
{
    if (lpValueName == nullptr || lpcchValueName == nullptr || (lpData != nullptr && !lpcbData))
        return ERROR_INVALID_PARAMETER;
    return OnKey(hKey, [&](OpenKey* key) {
        if (LONG error = key->ReadValues(); error != ERROR_SUCCESS)
            return error;
        if (dwIndex >= key->valueHandles.size())
            return static_cast<LONG>(ERROR_NO_MORE_ITEMS);
        const std::string& name = key->valueNames[dwIndex];
        if (name.size() + 1 > *lpcchValueName)
            return static_cast<LONG>(ERROR_MORE_DATA);

        hive_type type;
        size_t length = 0;
        Malloced<char> raw(
            hivex_value_value(key->hive->Handle(), key->valueHandles[dwIndex], &type, &length));
        if (raw == nullptr)
            return static_cast<LONG>(ERROR_REGISTRY_CORRUPT);
        std::string data = IsStringType(TypeCode(type)) ? NarrowText(raw.get(), length)
                                                        : std::string(raw.get(), length);
        if (lpcbData != nullptr) {
            DWORD available = *lpcbData;
            *lpcbData = static_cast<DWORD>(data.size());
            if (lpData != nullptr) {
                if (data.size() > available)
                    return static_cast<LONG>(ERROR_MORE_DATA);
                std::memcpy(lpData, data.data(), data.size());
            }
        }
        std::memcpy(lpValueName, name.c_str(), name.size() + 1);
        *lpcchValueName = static_cast<DWORD>(name.size());
        if (lpType != nullptr)
            *lpType = TypeCode(type);
        return static_cast<LONG>(ERROR_SUCCESS);
    });
}

LONG RegCloseKey(HKEY hKey)
{
    if (IsPredefined(hKey))
        return ERROR_SUCCESS;
    return Guarded([&] {
        auto* key = reinterpret_cast<OpenKey*>(hKey);
        if (TheState().handles.erase(key) == 0)
            return static_cast<LONG>(ERROR_INVALID_HANDLE);
        delete key;
        return static_cast<LONG>(ERROR_SUCCESS);
    });
}
