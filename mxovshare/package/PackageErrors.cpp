#include "package/PackageErrors.h"

#include "common/Utf8.h"
#include "pack/ProgressMeter.h"
#include "zip/PackageError.h"

#include <new>

namespace mxovshare {

PackageResult ResultOfException(const std::wstring& file) noexcept {
    PackageResult result;
    try {
        try {
            throw;
        } catch (const Cancelled&) {
            result.cancelled = true;
        } catch (const PackageError& error) {
            result.message = L"\"" + file + L"\": " + common::FromUtf8(error.what());
        } catch (const Error& error) {
            result.message = common::FromUtf8(error.what());
        } catch (const std::bad_alloc&) {
            result.message = L"\"" + file + L"\": there is not enough memory";
        }
    } catch (...) {
        result.message.clear();
    }
    return result;
}

} // namespace mxovshare
