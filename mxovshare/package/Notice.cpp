#include "package/Notice.h"

#include <windows.h>

#include <utility>

namespace mxovshare {

namespace {

constexpr wchar_t kTitle[] = L"Maxtrel Orvando Document Manager";

NoticeSink g_sink = nullptr;
QuestionSink g_questionSink = nullptr;

} // namespace

void TellUser(const std::wstring& text) {
    if (g_sink != nullptr) {
        g_sink(text);
    } else {
        MessageBoxW(GetActiveWindow(), text.c_str(), kTitle, MB_OK | MB_ICONERROR);
    }
}

bool AskUser(const std::wstring& text) {
    if (g_questionSink != nullptr) {
        return g_questionSink(text);
    }
    return MessageBoxW(GetActiveWindow(), text.c_str(), kTitle, MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2) ==
           IDYES;
}

QuestionSink SetQuestionSink(QuestionSink sink) {
    return std::exchange(g_questionSink, sink);
}

NoticeSink SetNoticeSink(NoticeSink sink) {
    return std::exchange(g_sink, sink);
}

} // namespace mxovshare
