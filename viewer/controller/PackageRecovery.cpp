#include "controller/PackageRecovery.h"

#include "prompts/UnsavedPrompts.h"

namespace viewer {

std::unique_ptr<PackageSession> AskToContinue(HWND owner, SessionStore& sessions) {
    std::unique_ptr<PackageSession> chosen;
    for (std::unique_ptr<PackageSession>& session : sessions.TakeOver()) {
        if (chosen) {
            session->Keep();
            continue;
        }
        if (!DiffersFromPackage(session->Folder(), session->PackageFile())) {
            continue;
        }
        const RecoveryAnswer answer =
            AskToRecover(owner, session->PackageFile(), LastWriteBelow(session->Folder()));
        if (answer == RecoveryAnswer::Continue) {
            chosen = std::move(session);
        } else if (answer == RecoveryAnswer::Later) {
            session->Keep();
        }
    }
    return chosen;
}

} // namespace viewer
