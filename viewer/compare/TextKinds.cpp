#include "compare/TextKinds.h"

#include "common/Paths.h"

#include <algorithm>
#include <iterator>

namespace viewer {

namespace {

struct KnownExtension {
    const wchar_t* extension;
    TextKind kind;
};

constexpr KnownExtension kExtensions[] = {
    {L".nc", TextKind::GCode},   {L".tap", TextKind::GCode},   {L".xml", TextKind::Markup},
    {L".htm", TextKind::Markup}, {L".html", TextKind::Markup}, {L".txt", TextKind::Plain},
    {L".csv", TextKind::Plain},  {L".ini", TextKind::Plain},   {L".log", TextKind::Plain},
    {L".json", TextKind::Plain}, {L".md", TextKind::Plain},
};

} // namespace

std::optional<TextKind> KindOfText(const std::wstring& name) {
    const std::wstring extension = name.substr(std::min(name.rfind(L'.'), name.size()));
    const auto* const found = std::ranges::find_if(kExtensions, [&](const KnownExtension& known) {
        return common::IsSamePath(extension, known.extension);
    });
    return found != std::end(kExtensions) ? std::optional(found->kind) : std::nullopt;
}

} // namespace viewer
