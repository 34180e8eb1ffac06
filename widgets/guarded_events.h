// Where signals and event overrides enter the program: every handler runs through the guard.
#pragma once

#include <QObject>
#include <concepts>
#include <string_view>
#include <utility>

#include "model/failure_guard.h"

namespace spellwick {

class GuardedEvents {
  public:
    // `failures` outlives `context`; connections end with `context`, which is the form or tab.
    GuardedEvents(FailureSink& failures, QObject* context)
        : m_failures(failures), m_context(context) {}

    // Calls `handler` on each `signal` with as many of its arguments as it takes. `action` is a
    // literal that says in words what the user is doing.
    template <typename Sender, typename Signal, typename Handler>
    void On(const Sender* sender, Signal signal, const char* action, Handler handler) const {
        QObject::connect(sender, signal, m_context,
                         Guarded<Handler>{m_failures, action, std::move(handler)});
    }

    // Runs an event override through the guard.
    template <typename Step>
    void Run(std::string_view action, Step&& step) const {
        Guard(m_failures, action, std::forward<Step>(step));
    }

  private:
    // Accepts exactly the arguments that the handler takes; the toolkit tries fewer and fewer until
    // they fit.
    template <typename Handler>
    struct Guarded {
        template <typename... Arguments>
        requires std::invocable<const Handler&, const Arguments&...>
        void operator()(const Arguments&... arguments) const {
            Guard(failures, action, [&] { handler(arguments...); });
        }

        FailureSink& failures;
        const char* action;
        Handler handler;
    };

    FailureSink& m_failures;
    QObject* m_context;
};

}  // namespace spellwick
