#include "win32_script_front_end.h"

#include "win32/win32_text.h"

#include <wincodec.h>

namespace vantrel::win32 {

namespace {

constexpr wchar_t kStepClass[] = L"VantrelScriptSteps";
constexpr UINT kRunStep = WM_APP + 1;

template <typename Interface>
class ComPointer {
public:
    ComPointer() = default;
    ~ComPointer() {
        if (pointer_) {
            pointer_->Release();
        }
    }
    ComPointer(const ComPointer&) = delete;
    ComPointer& operator=(const ComPointer&) = delete;
    Interface** out() { return &pointer_; }
    Interface* operator->() const { return pointer_; }
    Interface* get() const { return pointer_; }

private:
    Interface* pointer_ = nullptr;
};

}  // namespace

ScriptFrontEnd::ScriptFrontEnd(ConsoleApp& app)
    : app_(app) {
    WNDCLASSEXW type{};
    type.cbSize = sizeof(type);
    type.lpfnWndProc = &ScriptFrontEnd::Procedure;
    type.hInstance = GetModuleHandleW(nullptr);
    type.lpszClassName = kStepClass;
    RegisterClassExW(&type);
    messages_ =
        CreateWindowExW(0, kStepClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(messages_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

ScriptFrontEnd::~ScriptFrontEnd() {
    if (messages_) {
        DestroyWindow(messages_);
    }
}

LRESULT CALLBACK ScriptFrontEnd::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<ScriptFrontEnd*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == kRunStep && self && !self->steps_.empty()) {
        std::function<void()> step = std::move(self->steps_.front());
        self->steps_.pop_front();
        step();
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

std::string ScriptFrontEnd::ActiveForm() { return app_.Active().description().name; }

bool ScriptFrontEnd::Click(const std::string& control, bool twice) {
    FormWindow& form = app_.Active();
    HWND handle = form.Control(control);
    if (!handle || !IsWindowVisible(handle) || !IsWindowEnabled(handle)) {
        return false;
    }
    if (GetActiveWindow() != form.handle()) {
        SetActiveWindow(form.handle());
    }
    RECT area{};
    GetClientRect(handle, &area);
    const LPARAM centre = MAKELPARAM((area.right - area.left) / 2, (area.bottom - area.top) / 2);
    // The system's own mouse messages: a button takes the focus on the
    // press and notifies its click on the release; the second press of a
    // double click is the system's double-click message.
    SendMessageW(handle, WM_LBUTTONDOWN, MK_LBUTTON, centre);
    SendMessageW(handle, WM_LBUTTONUP, 0, centre);
    if (twice && IsWindow(handle)) {
        SendMessageW(handle, WM_LBUTTONDBLCLK, MK_LBUTTON, centre);
        SendMessageW(handle, WM_LBUTTONUP, 0, centre);
    }
    return true;
}

void ScriptFrontEnd::Type(const std::string& control, const Text& text) {
    FormWindow& form = app_.Active();
    if (GetActiveWindow() != form.handle()) {
        SetActiveWindow(form.handle());
    }
    form.Type(control, text);
}

bool ScriptFrontEnd::Menu(const std::string& menu, const Text& entry) { return app_.window().RunMenu(menu, entry); }

void ScriptFrontEnd::Tick() { app_.window().FireTimer("Timer1"); }

ScriptFrontEnd::Picture ScriptFrontEnd::Shot(const std::string& window, const std::string& file) {
    FormWindow* form = app_.Window(window);
    if (!form || !IsWindowVisible(form->handle())) {
        return Picture::NoWindow;
    }
    UpdateWindow(form->handle());
    return WriteWindowPicture(form->handle(), WideFromUtf8(file)) ? Picture::Written : Picture::NotWritten;
}

void ScriptFrontEnd::Later(std::function<void()> step) {
    steps_.push_back(std::move(step));
    PostMessageW(messages_, kRunStep, 0, 0);
}

void ScriptFrontEnd::Quit(int code) { PostQuitMessage(code); }

namespace {

// The bitmap as a PNG file, through the Windows Imaging Component.
bool EncodePng(HBITMAP bitmap, int width, int height, const std::wstring& file) {
    bool written = false;
    ComPointer<IWICImagingFactory> factory;
    ComPointer<IWICBitmap> picture;
    ComPointer<IWICStream> stream;
    ComPointer<IWICBitmapEncoder> encoder;
    ComPointer<IWICBitmapFrameEncode> frame;
    if (SUCCEEDED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                   reinterpret_cast<void**>(factory.out()))) &&
        SUCCEEDED(factory->CreateBitmapFromHBITMAP(bitmap, nullptr, WICBitmapIgnoreAlpha, picture.out())) &&
        SUCCEEDED(factory->CreateStream(stream.out())) &&
        SUCCEEDED(stream->InitializeFromFilename(file.c_str(), GENERIC_WRITE)) &&
        SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.out())) &&
        SUCCEEDED(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache)) &&
        SUCCEEDED(encoder->CreateNewFrame(frame.out(), nullptr)) && SUCCEEDED(frame->Initialize(nullptr))) {
        UINT w = static_cast<UINT>(width);
        UINT h = static_cast<UINT>(height);
        WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
        written = SUCCEEDED(frame->SetSize(w, h)) && SUCCEEDED(frame->SetPixelFormat(&format)) &&
                  SUCCEEDED(frame->WriteSource(picture.get(), nullptr)) && SUCCEEDED(frame->Commit()) &&
                  SUCCEEDED(encoder->Commit());
    }
    return written;
}

}  // namespace

bool WriteWindowPicture(HWND window, const std::wstring& file) {
    RECT outer{};
    GetWindowRect(window, &outer);
    const int width = outer.right - outer.left;
    const int height = outer.bottom - outer.top;
    if (width <= 0 || height <= 0) {
        return false;
    }
    // The window's own pixels, its children's included; a part off the
    // screen would come out black, so the window is kept on it.
    HDC source = GetWindowDC(window);
    HDC memory = CreateCompatibleDC(source);
    HBITMAP bitmap = CreateCompatibleBitmap(source, width, height);
    HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, source, 0, 0, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
    ReleaseDC(window, source);

    // The encoder is a COM object: the thread enters an apartment for it,
    // unless the server's connection has entered one already.
    const HRESULT apartment = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const bool written = EncodePng(bitmap, width, height, file);
    if (SUCCEEDED(apartment)) {
        CoUninitialize();
    }
    DeleteObject(bitmap);
    return written;
}

}  // namespace vantrel::win32
