#include "package/PackageErrors.h"

#include "zip/PackageError.h"

#include <new>

namespace mxovshare {

std::wstring FromUtf8(std::string_view text) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), length);
    return wide;
}

PackageResult RunForResult(const std::wstring& file, const std::function<void()>& work) noexcept {
    PackageResult result;
    try {
        try {
            work();
            result.ok = true;
        } catch (const Cancelled&) {
            result.cancelled = true;
        } catch (const FileFailure& failure) {
            result.message = failure.message;
        } catch (const PackageError& error) {
            result.message = L"\"" + file + L"\": " + FromUtf8(error.what());
        } catch (const std::bad_alloc&) {
            result.message = L"\"" + file + L"\": there is not enough memory";
        }
    } catch (...) {
        result.message.clear();
    }
    return result;
}

} // namespace mxovshare
