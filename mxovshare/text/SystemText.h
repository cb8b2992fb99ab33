// Text of the running system: its ANSI code page, its upper case, and its wide strings.
#pragma once

#include "TextPlatform.h"

namespace mxovshare {

class SystemText : public TextPlatform {
public:
    std::u16string DecodeAnsi(std::string_view bytes) const override;
    bool EncodeAnsi(std::u16string_view text, std::string& bytes) const override;
    bool IsLeadByte(unsigned char byte) const override;
    char16_t Upper(char16_t unit) const override;
};

std::u16string ToUtf16(std::wstring_view text);
/// Sets `copy` to `text`, in the memory it has.
void CopyUtf16(std::wstring_view text, std::u16string& copy);
std::wstring ToWide(std::u16string_view text);

} // namespace mxovshare
