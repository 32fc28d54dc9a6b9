// The state of a run lives in a few session objects: the application state,
// the platform services, the KVX, ZBL and upload sessions. The application
// owns them for the whole run; model code reaches the one in force through
// its accessor (appState(), kvxSession(), uploadSession(), ...), which is
// SessionSlot<S>::current(). A test makes fresh ones with OwnedSession<S>
// instead of resetting globals by hand.
#pragma once

#include <stdexcept>
#include <string>
#include <typeinfo>

namespace quenby {

template <class S>
class Installed;

// Where the session of type S in force is found. Asking when none is
// installed is a fault of the program (or of a test that forgot to make one),
// never silently a fresh object.
template <class S>
class SessionSlot
{
public:
    static S& current()
    {
        if (!s_current)
            throw std::logic_error(std::string("no session installed: ") + typeid(S).name());
        return *s_current;
    }
    static bool installed() { return s_current != nullptr; }

private:
    friend class Installed<S>;
    static inline S* s_current = nullptr;
};

// Puts `session` in force for the lifetime of this object, and the one that
// was in force before back afterwards.
template <class S>
class Installed
{
public:
    explicit Installed(S& session)
        : m_previous(SessionSlot<S>::s_current)
    {
        SessionSlot<S>::s_current = &session;
    }
    ~Installed() { SessionSlot<S>::s_current = m_previous; }
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;

private:
    S* m_previous;
};

// A session object and its installation in one: what the application holds
// for each session, and what a test makes fresh.
template <class S>
class OwnedSession
{
public:
    OwnedSession()
        : m_installed(m_session)
    {
    }
    S& operator*() { return m_session; }
    S* operator->() { return &m_session; }
    S& get() { return m_session; }

private:
    S m_session;
    Installed<S> m_installed;
};

} // namespace quenby
