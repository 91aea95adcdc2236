#include "selfextract/ProgressWindow.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>

#include "system/Process.h"

namespace tarvolinex::windows {

namespace {

constexpr wchar_t kClass[] = L"TarvolinexProgress";
constexpr unsigned kDesignDots = 96;        // dots per inch that the lengths below are meant for
constexpr int kWidth = 420, kHeight = 124;  // of the inside
constexpr std::uint64_t kMoment = 300;      // milliseconds before the window appears
constexpr int kSteps = 1000;                // of the bar

HWND Handle(void* window) {
  return static_cast<HWND>(window);
}

HFONT MessageFont(unsigned dots_per_inch, unsigned system_dots) {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  metrics.lfMessageFont.lfHeight =
      MulDiv(metrics.lfMessageFont.lfHeight, static_cast<int>(dots_per_inch), static_cast<int>(system_dots));
  return CreateFontIndirectW(&metrics.lfMessageFont);
}

unsigned SystemDots() {
  const HDC screen = GetDC(nullptr);
  const int dots = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return static_cast<unsigned>(dots);
}

}  // namespace

// What Windows tells the window.
struct ProgressWindowEvents {
  static LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM wide, LPARAM lng) {
    auto* progress = reinterpret_cast<ProgressWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (progress != nullptr && message == WM_DPICHANGED) {
      const RECT& place = *reinterpret_cast<const RECT*>(lng);
      SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
      progress->Arrange(LOWORD(wide));
      return 0;
    }
    // IDCANCEL is the button, and Escape.
    if (progress != nullptr && (message == WM_CLOSE || (message == WM_COMMAND && LOWORD(wide) == IDCANCEL))) {
      progress->stopped_ = true;
      return 0;
    }
    return DefWindowProcW(window, message, wide, lng);
  }
};

ProgressWindow::ProgressWindow(const std::wstring& title, bool silent, std::uint64_t bytes)
    : silent_(silent), bytes_(bytes), started_(GetTickCount64()) {
  if (silent) return;
  LoadSystemLibrary(L"comctl32.dll");
  WNDCLASSW kind = {};
  kind.lpfnWndProc = &ProgressWindowEvents::Handle;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.hIcon = LoadIconW(kind.hInstance, MAKEINTRESOURCEW(1));
  kind.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  kind.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  kind.lpszClassName = kClass;
  RegisterClassW(&kind);
  window_ = CreateWindowExW(WS_EX_CONTROLPARENT, kClass, title.c_str(), WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX, 0, 0,
                            10, 10, nullptr, nullptr, kind.hInstance, nullptr);
  if (window_ == nullptr) ThrowLastError(L"Opening the window", title);
  SetWindowLongPtrW(Handle(window_), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  MakeControls();
}

void ProgressWindow::MakeControls() {
  const auto make = [this](const wchar_t* kind, const wchar_t* text, DWORD style, INT_PTR number) {
    return CreateWindowExW(0, kind, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 10, 10, Handle(window_),
                           reinterpret_cast<HMENU>(number), GetModuleHandleW(nullptr), nullptr);
  };
  label_ = make(L"STATIC", L"", SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, 10);
  bar_ = make(PROGRESS_CLASSW, L"", 0, 11);
  button_ = make(L"BUTTON", L"Cancel", WS_TABSTOP | BS_DEFPUSHBUTTON, IDCANCEL);
  SendMessageW(Handle(bar_), PBM_SETRANGE32, 0, kSteps);
}

ProgressWindow::~ProgressWindow() {
  Close();
  if (font_ != nullptr) DeleteObject(static_cast<HFONT>(font_));
}

void ProgressWindow::Arrange(unsigned dots_per_inch) {
  const auto scaled = [dots_per_inch](int length) {
    return MulDiv(length, static_cast<int>(dots_per_inch), static_cast<int>(kDesignDots));
  };
  const auto place = [&](void* control, int x, int y, int width, int height) {
    MoveWindow(Handle(control), scaled(x), scaled(y), scaled(width), scaled(height), TRUE);
  };
  place(label_, 16, 16, kWidth - 32, 20);
  place(bar_, 16, 44, kWidth - 32, 20);
  place(button_, kWidth - 16 - 88, 82, 88, 28);
  const HFONT font = MessageFont(dots_per_inch, SystemDots());
  for (void* control : {label_, button_}) SendMessageW(Handle(control), WM_SETFONT, reinterpret_cast<WPARAM>(font), 1);
  if (font_ != nullptr) DeleteObject(static_cast<HFONT>(font_));
  font_ = font;
}

void ProgressWindow::Show() {
  const unsigned dots = SystemDots();
  RECT area = {}, inside = {0, 0, MulDiv(kWidth, static_cast<int>(dots), static_cast<int>(kDesignDots)),
                            MulDiv(kHeight, static_cast<int>(dots), static_cast<int>(kDesignDots))};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  AdjustWindowRect(&inside, WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX, FALSE);
  const int width = inside.right - inside.left, height = inside.bottom - inside.top;
  SetWindowPos(Handle(window_), nullptr, area.left + (area.right - area.left - width) / 2,
               area.top + (area.bottom - area.top - height) / 2, width, height, SWP_NOZORDER);
  Arrange(dots);
  ShowWindow(Handle(window_), SW_SHOW);
  SetFocus(Handle(button_));
  shown_ = true;
}

void ProgressWindow::Say(const std::wstring& text) {
  if (!silent_) SetWindowTextW(Handle(label_), text.c_str());
}

void ProgressWindow::Advance(std::uint64_t bytes) {
  done_ += bytes;
  if (silent_) return;
  if (!shown_ && GetTickCount64() - started_ > kMoment) Show();
  const std::uint64_t step = bytes_ == 0 ? kSteps : done_ * kSteps / bytes_;
  SendMessageW(Handle(bar_), PBM_SETPOS, static_cast<WPARAM>(step), 0);
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (IsDialogMessageW(Handle(window_), &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  if (stopped_) throw Stopped{};
}

void ProgressWindow::Close() {
  if (window_ != nullptr) DestroyWindow(Handle(window_));
  window_ = nullptr;
}

}  // namespace tarvolinex::windows
