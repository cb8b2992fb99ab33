// Code pages for tests of the INI model.
#pragma once

#include "ini/IniEncoding.h"

namespace mxovshare {

/// Upper case of Latin-1, Greek and Cyrillic letters.
class TestPlatform : public TextPlatform {
public:
    char16_t Upper(char16_t unit) const override {
        const bool latin = unit >= 0xE0 && unit <= 0xFE && unit != 0xF7;
        const bool greek = unit >= 0x3B1 && unit <= 0x3C9 && unit != 0x3C2;
        const bool cyrillic = unit >= 0x430 && unit <= 0x44F;
        return latin || greek || cyrillic ? static_cast<char16_t>(unit - 0x20) : unit;
    }
};

/// A page in which each byte is the character of that number.
class SingleBytePage : public TestPlatform {
public:
    std::u16string DecodeAnsi(std::string_view bytes) const override {
        std::u16string text;
        for (const char byte : bytes) {
            text += static_cast<char16_t>(static_cast<unsigned char>(byte));
        }
        return text;
    }

    bool EncodeAnsi(std::u16string_view text, std::string& bytes) const override {
        std::string encoded;
        for (const char16_t unit : text) {
            if (unit > 0xFF) {
                return false;
            }
            encoded += static_cast<char>(unit);
        }
        bytes += encoded;
        return true;
    }

    bool IsLeadByte(unsigned char) const override { return false; }
};

/// A page of two-byte characters as in East Asia: lead bytes 81 to FE, second bytes 40 to 7E, "]" and letters
/// among them.
class DoubleBytePage : public TestPlatform {
public:
    static constexpr char16_t kFirst = 0x4E00;
    static constexpr int kPerLead = 0xC0;

    std::u16string DecodeAnsi(std::string_view bytes) const override {
        std::u16string text;
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            const auto lead = static_cast<unsigned char>(bytes[at]);
            const auto second = static_cast<unsigned char>(at + 1 < bytes.size() ? bytes[at + 1] : 0);
            if (!IsLeadByte(lead)) {
                text += static_cast<char16_t>(lead);
            } else if (second < 0x40) {
                text += u'\xFFFD';
            } else {
                text += static_cast<char16_t>(kFirst + (lead - 0x81) * kPerLead + (second - 0x40));
                ++at;
            }
        }
        return text;
    }

    bool EncodeAnsi(std::u16string_view text, std::string& bytes) const override {
        std::string encoded;
        for (const char16_t unit : text) {
            if (unit < 0x80) {
                encoded += static_cast<char>(unit);
            } else if (unit >= kFirst && unit < kFirst + 0x7E * kPerLead) {
                encoded += static_cast<char>(0x81 + (unit - kFirst) / kPerLead);
                encoded += static_cast<char>(0x40 + (unit - kFirst) % kPerLead);
            } else {
                return false;
            }
        }
        bytes += encoded;
        return true;
    }

    bool IsLeadByte(unsigned char byte) const override { return byte >= 0x81 && byte <= 0xFE; }
};

/// A system whose ANSI code page is UTF-8.
class Utf8Page : public TestPlatform {
public:
    std::u16string DecodeAnsi(std::string_view bytes) const override {
        return DecodeText(bytes, IniEncoding::Utf8, *this);
    }
    bool EncodeAnsi(std::u16string_view text, std::string& bytes) const override {
        return EncodeText(text, IniEncoding::Utf8, *this, bytes);
    }
    bool IsLeadByte(unsigned char) const override { return false; }
};

} // namespace mxovshare
