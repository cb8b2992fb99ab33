#include "host/MessageBoxes.h"

#include <windows.h>

#include <utility>

namespace mxovshare {

namespace {

constexpr wchar_t kTitle[] = L"Maxtrel Orvando Document Manager";

ErrorSink g_errorSink = nullptr;
QuestionSink g_questionSink = nullptr;

} // namespace

void ShowError(const wchar_t* text) noexcept {
    if (g_errorSink != nullptr) {
        g_errorSink(text);
    } else {
        MessageBoxW(GetActiveWindow(), text, kTitle, MB_OK | MB_ICONERROR);
    }
}

bool AskYesNo(const std::wstring& text) {
    if (g_questionSink != nullptr) {
        return g_questionSink(text);
    }
    return MessageBoxW(GetActiveWindow(), text.c_str(), kTitle, MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2) ==
           IDYES;
}

ErrorSink SetErrorSink(ErrorSink sink) {
    return std::exchange(g_errorSink, sink);
}

QuestionSink SetQuestionSink(QuestionSink sink) {
    return std::exchange(g_questionSink, sink);
}

} // namespace mxovshare
