#include "PackageWork.h"

#include "zip/PackageError.h"

#include <algorithm>
#include <bit>
#include <new>

namespace mxovshare {

std::wstring FromUtf8(std::string_view text) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), length);
    return wide;
}

PackageResult RunPackageWork(const std::wstring& file, const std::function<void()>& work) noexcept {
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

unsigned ProcessorCount() {
    DWORD_PTR process = 0;
    DWORD_PTR system = 0;
    if (!GetProcessAffinityMask(GetCurrentProcess(), &process, &system)) {
        return 1;
    }
    return static_cast<unsigned>(std::max(1, std::popcount(process)));
}

void ProgressMeter::Begin(std::wstring name) {
    m_name = std::move(name);
    Tell();
}

void ProgressMeter::Advance(std::uint64_t bytes) {
    m_done = std::min(m_total, m_done + bytes);
    Tell();
}

void ProgressMeter::Tell() {
    if (m_listener != nullptr && !m_listener->OnProgress(m_name, m_done, m_total)) {
        throw Cancelled();
    }
}

} // namespace mxovshare
