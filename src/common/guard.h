#pragma once
#include "common/messages.h"
#include "common/refusal.h"
#include "common/session.h"
#include "data/database_error.h"

namespace liaowu {

/// The wait cursor for a scope.
class Busy {
public:
    explicit Busy(Messages& channel) : messages(channel) { messages.busy(true); }
    ~Busy() { messages.busy(false); }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    Messages& messages;
};

/// Runs an operation with database work: wait cursor, and on a failure the error's text in a box with the operation's
/// title. Connections and transactions of `work` are gone by then, rolled back. Gives false on failure.
template <typename Work>
bool guarded(Session& session, const QString& title, Work&& work) {
    try {
        Busy busy(session.messages);
        work();
        return true;
    } catch (const DatabaseError& error) {
        session.messages.stop(title, error.text);
        return false;
    } catch (const Refusal& refusal) {
        session.messages.warn(refusal.title, refusal.text);
        return false;
    }
}

} // namespace liaowu
