#include "InterruptibleWork.h"

#include "Commands.h"
#include "output/Interrupt.h"
#include "output/Report.h"

#include <chrono>
#include <cstdlib>
#include <future>
#include <thread>

int RunInterruptibly(const std::function<int()>& command) {
    constexpr std::chrono::milliseconds kLook(50);
    constexpr std::chrono::milliseconds kPatience(500); // for work that sees the interrupt itself
    const InterruptWatch interrupts;
    std::packaged_task<int()> task(command);
    std::future<int> ended = task.get_future();
    std::thread worker(std::move(task));
    while (ended.wait_for(kLook) != std::future_status::ready) {
        if (InterruptWatch::IsInterrupted() && ended.wait_for(kPatience) != std::future_status::ready) {
            PrintCancelled();
            std::_Exit(kFailed);
        }
    }
    worker.join();
    return ended.get();
}
