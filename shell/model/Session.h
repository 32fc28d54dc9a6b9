// The state of a run lives in a few session objects: the application state,
// the platform services, the KVX, ZBL and upload sessions. The application
// owns them for the whole run; model code reaches the one in force through
// its accessor (appState(), kvxSession(), uploadSession(), ...), which is
// Slot<S>::current(). A test makes fresh ones with OwnedSession<S> instead of
// resetting globals by hand.
//
// Windows register with their models the same way: a model declares the view
// interface it asks of its window, the application installs the window behind
// it, and a test installs a scripted one. Asking a view that nobody installed
// is an error, never silence.
#pragma once

#include <stdexcept>
#include <string>
#include <typeinfo>

namespace quenby {

template <class S> class Installed;

// Where the object of type S in force is found. Asking when none is
// installed is a fault of the program (or of a test that forgot to make one),
// never silently a fresh object.
template <class S> class Slot
{
public:
    static S& current()
    {
        if (!s_current)
            throw std::logic_error(std::string("nothing installed for ") + typeid(S).name());
        return *s_current;
    }
    static bool installed() { return s_current != nullptr; }

private:
    friend class Installed<S>;
    static inline S* s_current = nullptr;
};

// Puts `session` in force for the lifetime of this object, and the one that
// was in force before back afterwards.
template <class S> class Installed
{
public:
    explicit Installed(S& session) : m_previous(Slot<S>::s_current)
    {
        Slot<S>::s_current = &session;
    }
    ~Installed() { Slot<S>::s_current = m_previous; }
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;

private:
    S* m_previous;
};

// A session object and its installation in one: what the application holds
// for each session, and what a test makes fresh.
template <class S> class OwnedSession
{
public:
    OwnedSession() : m_installed(m_session) {}
    S& operator*() { return m_session; }
    S* operator->() { return &m_session; }
    S& get() { return m_session; }

private:
    S m_session;
    Installed<S> m_installed;
};

} // namespace quenby
