// Progress listeners of the tests.
#pragma once

#include "mxovpackage.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

/// Keeps every call.
class RecordingProgress : public mxovshare::PackageProgress {
public:
    struct Call {
        std::wstring name;
        std::uint64_t done;
        std::uint64_t total;
    };
    std::vector<Call> calls;

    bool OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) override {
        calls.push_back({name, done, total});
        return true;
    }

    /// Expects that it only grew, up to what was stated at the beginning.
    void ExpectToTheEnd() const {
        ASSERT_GE(calls.size(), 2U);
        for (std::size_t i = 1; i < calls.size(); ++i) {
            EXPECT_GE(calls[i].done, calls[i - 1].done);
            EXPECT_EQ(calls[i].total, calls[0].total);
        }
        EXPECT_EQ(calls.back().done, calls.back().total);
    }
};

/// Lets a number of calls pass and cancels at the next.
class CancellingProgress : public mxovshare::PackageProgress {
public:
    explicit CancellingProgress(int passes) : m_passes(passes) {}

    bool OnProgress(const std::wstring&, std::uint64_t, std::uint64_t) override { return m_passes-- > 0; }
    bool HasCancelled() const { return m_passes < 0; }

private:
    int m_passes;
};
