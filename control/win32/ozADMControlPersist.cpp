// The control's properties in a container's stream (IPersistStreamInit) and its property page
// (ISpecifyPropertyPages).
//
// Stream format, version 1, little-endian:
//   4 bytes "ozAD", 2 bytes version (1),
//   1 byte each ShowUser, ShowMachine, WithADMEdit (0 or 1), 1 byte reserved (0),
//   4 + 4 bytes the extent in HIMETRIC (width, height),
//   2 bytes n, the length of ozImpExLibrary in UTF-16 units (at most 260), n UTF-16 units.
// A later version adds fields at the end and raises the version; a version 1 reader refuses
// other versions rather than guess.
#include <windows.h>

#include <cstring>
#include <vector>

#include "ozADM.h"
#include "ozADMControl.h"
#include "platform/ozTextConversion.h"

namespace {

const char Magic[4] = {'o', 'z', 'A', 'D'};
const WORD Version = 1;
const size_t FixedSize = 4 + 2 + 4 + 8 + 2;

template <typename T>
void Append(std::vector<BYTE>& bytes, T value)
{
    const auto* first = reinterpret_cast<const BYTE*>(&value);
    bytes.insert(bytes.end(), first, first + sizeof value);
}

template <typename T>
T Take(const BYTE*& position)
{
    T value;
    std::memcpy(&value, position, sizeof value);
    position += sizeof value;
    return value;
}

HRESULT ReadExactly(IStream* stream, void* buffer, ULONG size)
{
    ULONG read = 0;
    HRESULT hr = stream->Read(buffer, size, &read);
    if (FAILED(hr))
        return hr;
    return read == size ? S_OK : STG_E_READFAULT;
}

}  // namespace

std::vector<BYTE> ozADMControl::PersistentState() const
{
    std::basic_string<WCHAR> library = ozWideText(m_control.ozImpExLibrary().c_str());
    if (library.size() > CADMCtrl::LibraryNameCapacity)
        library.resize(CADMCtrl::LibraryNameCapacity);
    std::vector<BYTE> bytes(Magic, Magic + 4);
    Append(bytes, Version);
    Append<BYTE>(bytes, m_control.ShowUser() ? 1 : 0);
    Append<BYTE>(bytes, m_control.ShowMachine() ? 1 : 0);
    Append<BYTE>(bytes, m_control.WithADMEdit() ? 1 : 0);
    Append<BYTE>(bytes, 0);
    Append<LONG>(bytes, m_extent.cx);
    Append<LONG>(bytes, m_extent.cy);
    Append(bytes, static_cast<WORD>(library.size()));
    for (WCHAR unit : library)
        Append(bytes, unit);
    return bytes;
}

STDMETHODIMP ozADMControl::GetClassID(CLSID* clsid)
{
    return GetUserClassID(clsid);
}

STDMETHODIMP ozADMControl::IsDirty()
{
    return PersistentState() != m_persisted ? S_OK : S_FALSE;
}

STDMETHODIMP ozADMControl::Load(LPSTREAM stream)
{
    if (stream == nullptr)
        return E_POINTER;
    BYTE fixed[FixedSize];
    HRESULT hr = ReadExactly(stream, fixed, FixedSize);
    if (FAILED(hr))
        return hr;
    const BYTE* position = fixed;
    if (std::memcmp(position, Magic, 4) != 0)
        return E_FAIL;
    position += 4;
    if (Take<WORD>(position) != Version)
        return E_FAIL;
    bool showUser = Take<BYTE>(position) != 0;
    bool showMachine = Take<BYTE>(position) != 0;
    bool withEdit = Take<BYTE>(position) != 0;
    position += 1;
    SIZEL extent;
    extent.cx = Take<LONG>(position);
    extent.cy = Take<LONG>(position);
    WORD length = Take<WORD>(position);
    if (length > CADMCtrl::LibraryNameCapacity)
        return E_FAIL;
    std::basic_string<WCHAR> library(length, L'\0');
    if (length > 0 && FAILED(hr = ReadExactly(stream, library.data(), length * sizeof(WCHAR))))
        return hr;
    // Nothing changes unless the whole stream was read.
    m_control.ShowUser(showUser);
    m_control.ShowMachine(showMachine);
    m_control.WithADMEdit(withEdit);
    m_control.ozImpExLibrary(ozNarrowText(library.c_str(), library.size()));
    m_extent = extent;
    m_persisted = PersistentState();
    return S_OK;
}

STDMETHODIMP ozADMControl::Save(LPSTREAM stream, BOOL clearDirty)
{
    if (stream == nullptr)
        return E_POINTER;
    std::vector<BYTE> bytes = PersistentState();
    ULONG written = 0;
    HRESULT hr = stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written);
    if (FAILED(hr))
        return hr;
    if (written != bytes.size())
        return STG_E_MEDIUMFULL;
    if (clearDirty)
        m_persisted = std::move(bytes);
    return S_OK;
}

STDMETHODIMP ozADMControl::GetSizeMax(ULARGE_INTEGER* size)
{
    if (size == nullptr)
        return E_POINTER;
    size->QuadPart = FixedSize + CADMCtrl::LibraryNameCapacity * sizeof(WCHAR);
    return S_OK;
}

STDMETHODIMP ozADMControl::InitNew()
{
    m_persisted = PersistentState();
    return S_OK;
}

STDMETHODIMP ozADMControl::GetPages(CAUUID* pages)
{
    if (pages == nullptr)
        return E_POINTER;
    pages->pElems = static_cast<GUID*>(CoTaskMemAlloc(sizeof(GUID)));
    if (pages->pElems == nullptr) {
        pages->cElems = 0;
        return E_OUTOFMEMORY;
    }
    pages->pElems[0] = CLSID_ozADMPropPage;
    pages->cElems = 1;
    return S_OK;
}
