// Folding and painting group boxes full of controls, beside what the system takes for the same windows.
#include "BoxParent.h"
#include "controls/CollapseGroupBox.h"
#include "controls/MXOVGroupBoxEx.h"
#include "Report.h"
#include "Timing.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int kControls = 500;
constexpr int kColumns = 25;
constexpr int kRuns = 15;
constexpr RECT kBoxPlace{5, 5, 395, 400};

/// One way of hiding and showing controls, with a window of its own.
class Subject {
public:
    explicit Subject(const char* name) : m_name(name) {
        m_controls.reserve(kControls);
        for (int i = 0; i < kControls; ++i) {
            const LONG left = 10 + i % kColumns * 15;
            const LONG top = 30 + i / kColumns * 18;
            m_controls.push_back(m_parent.AddControl({left, top, left + 12, top + 14}, 2000 + i));
        }
    }
    virtual ~Subject() = default;
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;

    /// Folds and unfolds once, on top of the other windows, and keeps the times.
    void Run() {
        SetWindowPos(m_parent.Window(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        m_parent.Paint();
        const auto change = [this](bool folded) {
            Set(folded);
            m_parent.Paint();
        };
        m_foldTimes.push_back(bench::Median(1, [&] { change(true); }));
        m_unfoldTimes.push_back(bench::Median(1, [&] { change(false); }));
    }

    void Print(const Subject* limit = nullptr) {
        Row("folded", Middle(m_foldTimes), limit ? Middle(limit->m_foldTimes) : 0);
        Row("unfolded", Middle(m_unfoldTimes), limit ? Middle(limit->m_unfoldTimes) : 0);
    }

protected:
    virtual void Set(bool folded) = 0;

    void Row(const char* what, double milliseconds, double limit = 0) const {
        const std::string title = m_name + std::string(", ") + what;
        limit > 0 ? bench::Compared(title.c_str(), milliseconds, limit)
                  : bench::Row(title.c_str(), milliseconds);
    }

    BoxParent m_parent;
    std::vector<HWND> m_controls;

private:
    static double Middle(std::vector<double> times) {
        std::ranges::sort(times);
        return times[times.size() / 2];
    }

    const char* m_name;
    std::vector<double> m_foldTimes;
    std::vector<double> m_unfoldTimes;
};

/// The system's own functions on the same windows.
class PlainWindows : public Subject {
public:
    PlainWindows(const char* name, bool disable) : Subject(name), m_disable(disable) {}

private:
    void Set(bool folded) override {
        for (HWND control : m_controls) {
            if (m_disable) {
                EnableWindow(control, !folded);
            }
            ShowWindow(control, folded ? SW_HIDE : SW_SHOWNORMAL);
        }
    }

    bool m_disable;
};

void Fold(CollapseGroupBox& box, bool folded) {
    box.SetCollapsed(folded);
}

void Fold(MXOVGroupBoxEx& box, bool folded) {
    box.SetExpanded(!folded);
}

/// A group box around the controls.
template <typename Box>
class BoxedWindows : public Subject {
public:
    explicit BoxedWindows(const char* name) : Subject(name) {
        m_box.SubclassWindow(m_parent.AddGroupBox(kBoxPlace, L"Box"));
        m_box.Invalidate();
        m_parent.Paint();
    }
    ~BoxedWindows() override { m_box.DestroyWindow(); }

    void PrintPaint() {
        Row("painted", bench::Median(kRuns, [this] {
                m_box.Invalidate();
                m_box.UpdateWindow();
            }));
    }

private:
    void Set(bool folded) override { Fold(m_box, folded); }

    Box m_box;
};

} // namespace

int main() {
    PlainWindows disabling("hide and disable, show and enable", true);
    PlainWindows hiding("hide and show", false);
    BoxedWindows<CollapseGroupBox> collapsible("CollapseGroupBox");
    BoxedWindows<MXOVGroupBoxEx> section("MXOVGroupBoxEx");
    // In turns, so that a busy machine slows all of them alike.
    for (int run = 0; run < kRuns; ++run) {
        for (Subject* subject : {static_cast<Subject*>(&disabling), static_cast<Subject*>(&collapsible),
                                 static_cast<Subject*>(&hiding), static_cast<Subject*>(&section)}) {
            subject->Run();
        }
    }
    std::printf("%d controls\n", kControls);
    disabling.Print();
    collapsible.Print(&disabling);
    collapsible.PrintPaint();
    hiding.Print();
    section.Print(&hiding);
    section.PrintPaint();
    return 0;
}
