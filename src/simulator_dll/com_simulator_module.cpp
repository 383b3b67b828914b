// The built-in simulator as an in-process COM server: the class factory, the
// four exports of a self-registering DLL, and its registry entries.

#include "simulator_dll/com_simulator_control.h"
#include "simulator_dll/com_simulator_dispatch.h"

#include <string>

#include <windows.h>
#include <olectl.h>

namespace vantrel::com {
namespace {

constexpr wchar_t kProgId[] = L"Vantrel.Application";
constexpr wchar_t kDescription[] = L"Vantrel.Application (built-in simulator of the test console)";

class SimulatorFactory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!object) {
            return E_POINTER;
        }
        if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IClassFactory)) {
            *object = static_cast<IClassFactory*>(this);
            AddRef();
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    // The factory is static: it lives as long as the module.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        if (!object) {
            return E_POINTER;
        }
        *object = nullptr;
        if (outer) {
            return CLASS_E_NOAGGREGATION;
        }
        SimulatorDispatch* created = nullptr;
        try {
            created = new SimulatorDispatch();
        } catch (...) {
            return E_OUTOFMEMORY;
        }
        const HRESULT result = created->QueryInterface(id, object);
        created->Release();  // the interface asked for holds the one reference left
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        if (lock) {
            ++gModuleReferences;
        } else {
            --gModuleReferences;
        }
        return S_OK;
    }
};

SimulatorFactory gFactory;

std::wstring GuidText(const GUID& guid) {
    wchar_t buffer[40] = {};
    StringFromGUID2(guid, buffer, 40);
    return buffer;
}

std::wstring ClassKey() { return L"CLSID\\" + GuidText(kSimulatorClassId); }
// The class's own AppID, whose empty DllSurrogate lets a client create the
// simulator as a local server, in the system's surrogate process.
std::wstring AppIdKey() { return L"AppID\\" + GuidText(kSimulatorClassId); }

bool SetValue(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    HKEY handle = nullptr;
    if (RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr,
                        &handle, nullptr) != ERROR_SUCCESS) {
        return false;
    }
    const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    const LONG result = RegSetValueExW(handle, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()), bytes);
    RegCloseKey(handle);
    return result == ERROR_SUCCESS;
}

// The class the ProgID names now, or an empty text when it names none.
std::wstring RegisteredClass() {
    wchar_t buffer[64] = {};
    DWORD bytes = sizeof buffer - sizeof(wchar_t);
    const std::wstring key = std::wstring(kProgId) + L"\\CLSID";
    if (RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, buffer, &bytes) !=
        ERROR_SUCCESS) {
        return {};
    }
    return buffer;
}

std::wstring ModulePath() {
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&gFactory), &module)) {
        return {};
    }
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) {
            return {};
        }
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace
}  // namespace vantrel::com

using namespace vantrel::com;

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, LPVOID* object) {
    if (!object) {
        return E_POINTER;
    }
    *object = nullptr;
    if (!IsEqualCLSID(classId, kSimulatorClassId)) {
        return CLASS_E_CLASSNOTAVAILABLE;
    }
    return gFactory.QueryInterface(id, object);
}

STDAPI DllCanUnloadNow() { return gModuleReferences == 0 ? S_OK : S_FALSE; }

// Registers under HKCR (the per-user classes are not honoured everywhere).
// It does not displace another server already registered under the ProgID:
// on a workstation with the real server that one stays.
STDAPI DllRegisterServer() {
    const std::wstring current = RegisteredClass();
    const std::wstring ours = GuidText(kSimulatorClassId);
    if (!current.empty() && _wcsicmp(current.c_str(), ours.c_str()) != 0) {
        return SELFREG_E_CLASS;
    }
    const std::wstring path = ModulePath();
    if (path.empty()) {
        return SELFREG_E_CLASS;
    }
    const std::wstring classKey = ClassKey();
    const bool written =
        SetValue(classKey, nullptr, kDescription) && SetValue(classKey + L"\\InprocServer32", nullptr, path) &&
        SetValue(classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
        SetValue(classKey + L"\\ProgID", nullptr, kProgId) && SetValue(kProgId, nullptr, kDescription) &&
        SetValue(std::wstring(kProgId) + L"\\CLSID", nullptr, ours) && SetValue(classKey, L"AppID", ours) &&
        SetValue(AppIdKey(), nullptr, kDescription) && SetValue(AppIdKey(), L"DllSurrogate", L"");
    return written ? S_OK : SELFREG_E_CLASS;
}

// Removes the class, and the ProgID only where it still names this class.
STDAPI DllUnregisterServer() {
    const std::wstring current = RegisteredClass();
    if (_wcsicmp(current.c_str(), GuidText(kSimulatorClassId).c_str()) == 0) {
        RegDeleteTreeW(HKEY_CLASSES_ROOT, kProgId);
    }
    RegDeleteTreeW(HKEY_CLASSES_ROOT, AppIdKey().c_str());
    const LONG result = RegDeleteTreeW(HKEY_CLASSES_ROOT, ClassKey().c_str());
    return result == ERROR_SUCCESS || result == ERROR_FILE_NOT_FOUND ? S_OK : SELFREG_E_CLASS;
}
