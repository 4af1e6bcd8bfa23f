// lstd/signal.h - signals: ordered lists of connections activated together on emission.
#ifndef LSTD_SIGNAL_H
#define LSTD_SIGNAL_H

#include <lstd/exception.h>
#include <lstd/ptrdlinklist.h>

#include <new>

namespace lstd {
namespace sign {

/// Root of the signals. A signal owns its connections: connecting appends, emission
/// activates them in the order connected, destruction deletes them. Nothing is locked.
class Signal {
public:
    /// One receiver of a signal; the signal that holds it deletes it.
    class Connection {
    public:
        Connection() {}
        virtual ~Connection() {}
        /// The kind of connection: 1 for a free function; other kinds use other numbers.
        virtual int GetConnectionType() const = 0;
        /// Whether other reaches the same receiver; the connection lists search with it.
        virtual bool operator==(Connection const& other) const = 0;
    };

    Signal() {}
    virtual ~Signal() {}

protected:
    /// A new C built from function. Throws NotEnoughMemoryException with the allocator's text.
    template <typename C, typename F>
    static C* NewConnection(F function) {
        try {
            return new C(function);
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
    }
    /// Appends connection to connections, which then own it. When that fails the list is
    /// unchanged, connection is deleted and NotEnoughMemoryException is thrown.
    template <typename C>
    static void Link(PtrDLinkList<C>& connections, C* connection) {
        try {
            connections.Append(connection);
        } catch (NotEnoughMemoryException const& e) {
            delete connection;
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
    }
    /// Calls activate with each connection, head to tail, of those connected when the
    /// emission starts: its end is fixed then, as a list iterator fixes it, so connections
    /// added meanwhile run from the next emission on. Null entries are skipped.
    template <typename C, typename F>
    static void Emit(PtrDLinkList<C> const& connections, F activate) {
        unsigned long remaining = connections.GetNumberOfEntry();
        for (PtrDoubleLink<C>* node = connections.GetHead(); node != nullptr && remaining > 0;
             node = node->mNext, --remaining)
            if (node->mItem != nullptr)
                activate(*node->mItem);
    }
    /// Removes and deletes the first connection equal to probe; whether there was one.
    template <typename C>
    static bool Unlink(PtrDLinkList<C>& connections, C const& probe) {
        C* removed = connections.Remove(&probe);
        delete removed;
        return removed != nullptr;
    }
};

/// A signal emitted without arguments (the process exit handlers are one).
class NoArgSignal : public Signal {
public:
    /// A receiver of a NoArgSignal.
    class NoArgConnection : public Signal::Connection {
    public:
        NoArgConnection() {}
        virtual ~NoArgConnection() {}
        /// Runs the connection once; called by Emit.
        virtual void Activate() = 0;
    };

    /// Calls a free function returning R (type 1). A null function is never called.
    template <typename R>
    class NoArgFunctionConnection : public NoArgConnection {
    public:
        /// Calls function on each activation (null: never).
        explicit NoArgFunctionConnection(R (*function)()) : mFunction(function) {}
        virtual ~NoArgFunctionConnection() {}
        int GetConnectionType() const override { return 1; }
        /// True when other is a function connection of this class calling the same function.
        bool operator==(Signal::Connection const& other) const override {
            if (other.GetConnectionType() != 1)
                return false;
            auto const* same = dynamic_cast<NoArgFunctionConnection const*>(&other);
            return same != nullptr && same->mFunction == mFunction;
        }
        /// Calls the function, when there is one.
        void Activate() override {
            if (mFunction != nullptr)
                mFunction();
        }

    private:
        R (*mFunction)();
    };

    NoArgSignal() {}
    /// Deletes every connection.
    virtual ~NoArgSignal() { mConnections.Clear(1); }

    /// True when at least one connection is held.
    virtual bool IsConnecting() const { return mConnections.GetNumberOfEntry() > 0; }
    /// Appends a connection calling function; no duplicate check, so a function connected
    /// twice runs twice. Throws NotEnoughMemoryException (the list is then unchanged).
    void Connect(void (*function)()) {
        Link<NoArgConnection>(mConnections, NewConnection<NoArgFunctionConnection<void>>(function));
    }
    /// Appends connection, which the signal then owns (and deletes if the append fails).
    /// Throws NotEnoughMemoryException.
    void Connect(NoArgConnection* connection) { Link(mConnections, connection); }
    /// Removes and deletes the first connection calling function; false when there is none.
    bool Disconnect(void (*function)()) {
        return Unlink<NoArgConnection>(mConnections, NoArgFunctionConnection<void>(function));
    }
    /// Deletes every connection.
    void DisconnectAll() { mConnections.Clear(1); }
    ///@{
    /// The connections in activation order; items removed from it belong to the caller.
    PtrDLinkList<NoArgConnection>& GetConnections() { return mConnections; }
    PtrDLinkList<NoArgConnection> const& GetConnections() const { return mConnections; }
    ///@}
    /// Activates every connection, first connected first; an exception from one stops the
    /// emission and propagates. Connections appended meanwhile run from the next emission;
    /// the one being activated must not be removed before it returns.
    void operator()() const {
        Emit(mConnections, [](NoArgConnection& connection) { connection.Activate(); });
    }

private:
    PtrDLinkList<NoArgConnection> mConnections;
};

/// A signal emitted with one argument of type A (references allowed: the argument is
/// passed on as A, so a reference reaches every receiver without a copy).
template <typename A>
class OneArgSignal : public Signal {
public:
    /// A receiver of a OneArgSignal.
    class OneArgConnection : public Signal::Connection {
    public:
        OneArgConnection() {}
        virtual ~OneArgConnection() {}
        /// Runs the connection with argument; called by Emit.
        virtual void Activate(A argument) = 0;
    };

    /// Calls a free function taking A and returning R (type 1). A null function is never
    /// called.
    template <typename R>
    class OneArgFunctionConnection : public OneArgConnection {
    public:
        /// Calls function on each activation (null: never).
        explicit OneArgFunctionConnection(R (*function)(A)) : mFunction(function) {}
        virtual ~OneArgFunctionConnection() {}
        int GetConnectionType() const override { return 1; }
        /// True when other is a function connection of this class calling the same function.
        bool operator==(Signal::Connection const& other) const override {
            if (other.GetConnectionType() != 1)
                return false;
            auto const* same = dynamic_cast<OneArgFunctionConnection const*>(&other);
            return same != nullptr && same->mFunction == mFunction;
        }
        /// Calls the function with argument, when there is one.
        void Activate(A argument) override {
            if (mFunction != nullptr)
                mFunction(argument);
        }

    private:
        R (*mFunction)(A);
    };

    OneArgSignal() {}
    /// Deletes every connection.
    virtual ~OneArgSignal() { mConnections.Clear(1); }

    /// True when at least one connection is held.
    virtual bool IsConnecting() const { return mConnections.GetNumberOfEntry() > 0; }
    /// Appends a connection calling function; no duplicate check. Throws
    /// NotEnoughMemoryException (the list is then unchanged).
    void Connect(void (*function)(A)) {
        Signal::Link<OneArgConnection>(
            mConnections, Signal::NewConnection<OneArgFunctionConnection<void>>(function));
    }
    /// Appends connection, which the signal then owns (and deletes if the append fails).
    /// Throws NotEnoughMemoryException.
    void Connect(OneArgConnection* connection) { Signal::Link(mConnections, connection); }
    /// Removes and deletes the first connection calling function; false when there is none.
    bool Disconnect(void (*function)(A)) {
        return Signal::Unlink<OneArgConnection>(mConnections,
                                                OneArgFunctionConnection<void>(function));
    }
    /// Deletes every connection.
    void DisconnectAll() { mConnections.Clear(1); }
    ///@{
    /// The connections in activation order; items removed from it belong to the caller.
    PtrDLinkList<OneArgConnection>& GetConnections() { return mConnections; }
    PtrDLinkList<OneArgConnection> const& GetConnections() const { return mConnections; }
    ///@}
    /// Activates every connection with argument, in connection order; as NoArgSignal's.
    void operator()(A argument) const {
        Signal::Emit(mConnections,
                     [&argument](OneArgConnection& connection) { connection.Activate(argument); });
    }

private:
    PtrDLinkList<OneArgConnection> mConnections;
};

/// A signal emitted with two arguments of types A and B (references allowed).
template <typename A, typename B>
class TwoArgSignal : public Signal {
public:
    /// A receiver of a TwoArgSignal.
    class TwoArgConnection : public Signal::Connection {
    public:
        TwoArgConnection() {}
        virtual ~TwoArgConnection() {}
        /// Runs the connection with both arguments; called by Emit.
        virtual void Activate(A first, B second) = 0;
    };

    /// Calls a free function taking A and B and returning R (type 1). A null function is
    /// never called.
    template <typename R>
    class TwoArgFunctionConnection : public TwoArgConnection {
    public:
        /// Calls function on each activation (null: never).
        explicit TwoArgFunctionConnection(R (*function)(A, B)) : mFunction(function) {}
        virtual ~TwoArgFunctionConnection() {}
        int GetConnectionType() const override { return 1; }
        /// True when other is a function connection of this class calling the same function.
        bool operator==(Signal::Connection const& other) const override {
            if (other.GetConnectionType() != 1)
                return false;
            auto const* same = dynamic_cast<TwoArgFunctionConnection const*>(&other);
            return same != nullptr && same->mFunction == mFunction;
        }
        /// Calls the function with both arguments, when there is one.
        void Activate(A first, B second) override {
            if (mFunction != nullptr)
                mFunction(first, second);
        }

    private:
        R (*mFunction)(A, B);
    };

    TwoArgSignal() {}
    /// Deletes every connection.
    virtual ~TwoArgSignal() { mConnections.Clear(1); }

    /// True when at least one connection is held.
    virtual bool IsConnecting() const { return mConnections.GetNumberOfEntry() > 0; }
    /// Appends a connection calling function; no duplicate check. Throws
    /// NotEnoughMemoryException (the list is then unchanged).
    void Connect(void (*function)(A, B)) {
        Signal::Link<TwoArgConnection>(
            mConnections, Signal::NewConnection<TwoArgFunctionConnection<void>>(function));
    }
    /// Appends connection, which the signal then owns (and deletes if the append fails).
    /// Throws NotEnoughMemoryException.
    void Connect(TwoArgConnection* connection) { Signal::Link(mConnections, connection); }
    /// Removes and deletes the first connection calling function; false when there is none.
    bool Disconnect(void (*function)(A, B)) {
        return Signal::Unlink<TwoArgConnection>(mConnections,
                                                TwoArgFunctionConnection<void>(function));
    }
    /// Deletes every connection.
    void DisconnectAll() { mConnections.Clear(1); }
    ///@{
    /// The connections in activation order; items removed from it belong to the caller.
    PtrDLinkList<TwoArgConnection>& GetConnections() { return mConnections; }
    PtrDLinkList<TwoArgConnection> const& GetConnections() const { return mConnections; }
    ///@}
    /// Activates every connection with both arguments, in connection order; as NoArgSignal's.
    void operator()(A first, B second) const {
        Signal::Emit(mConnections, [&first, &second](TwoArgConnection& connection) {
            connection.Activate(first, second);
        });
    }

private:
    PtrDLinkList<TwoArgConnection> mConnections;
};
}  // namespace sign
}  // namespace lstd
#endif  // LSTD_SIGNAL_H
