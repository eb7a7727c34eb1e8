#include "com/platform.h"

#include "com/counted.h"
#include "com/text.h"
#include "com/variant.h"
#include "com/windows_api.h"
#include "frame/platform.h"

#include <memory>

namespace com {

namespace {

/// The `Version` of an object, as a text; empty when it can't be read.
std::string VersionOf(IDispatch& object) {
    wchar_t name[] = L"Version";
    LPOLESTR names[] = {name};
    DISPID number = DISPID_UNKNOWN;
    if (FAILED(object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &number))) return {};
    DISPPARAMS nothing{};
    OwnVariant version;
    if (FAILED(object.Invoke(number, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &nothing, &version.held,
                             nullptr, nullptr)) ||
        version.held.vt != VT_BSTR) {
        return {};
    }
    return FromBstr(version.held.bstrVal);
}

class ComPlatform final : public Zontara::Platform {
public:
    /// Asks an `ADODB.Connection`, which is made by name and for nothing else.
    std::string DataAccessVersion() const override {
        CLSID classId{};
        Counted<IDispatch> connection;
        if (FAILED(CLSIDFromProgID(L"ADODB.Connection", &classId)) ||
            FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, connection.ReceiveAny()))) {
            return Platform::DataAccessVersion();
        }
        const std::string version = VersionOf(*connection.get());
        return version.empty() ? Platform::DataAccessVersion() : version;
    }

    void Yield() const override {
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) {
                // For the client's own loop.
                PostQuitMessage(static_cast<int>(message.wParam));
                return;
            }
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
};

}  // namespace

void InstallPlatform() {
    static const bool installed = [] {
        Zontara::ReplacePlatform(std::make_shared<const ComPlatform>());
        return true;
    }();
    (void)installed;
}

}  // namespace com
