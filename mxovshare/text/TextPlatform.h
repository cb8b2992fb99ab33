// What platform-free code asks about text.
#pragma once

#include <string>
#include <string_view>

namespace mxovshare {

/// What the INI model asks of the system it runs on, so that it can be built and tested anywhere.
class TextPlatform {
public:
    virtual ~TextPlatform() = default;
    /// Text of bytes in the ANSI code page; every byte decodes to something.
    virtual std::u16string DecodeAnsi(std::string_view bytes) const = 0;
    /// Appends the bytes of `text` in the ANSI code page. False, and nothing appended, unless they give
    /// exactly `text` again.
    virtual bool EncodeAnsi(std::u16string_view text, std::string& bytes) const = 0;
    /// Whether a byte begins a two-byte character of the ANSI code page.
    virtual bool IsLeadByte(unsigned char byte) const = 0;
    /// Upper case of one unit outside ASCII, for comparing names.
    virtual char16_t Upper(char16_t unit) const = 0;
};

} // namespace mxovshare
