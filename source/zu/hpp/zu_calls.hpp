// zu_calls.hpp: lambdas where the C interface takes a function and an object, and guards that undo what they did.
//
//     zu::Runtime runtime( "count", "Word counter", "1.0" );
//     zu::Ref<ZU_THREAD> thread = zu::spawn( "worker", [ jobs ] { ... } );
//     zu::Ref<ZU_TIMER> timer = zu::timer( [ jobs ] { ... } );
//     { zu::MonitorGuard inside( monitor ); ... }
//
// A lambda is moved into an object that whoever calls it keeps; it is destroyed with the last reference to that object,
// on the thread that gives it up, and with it whatever it has captured.  It must not throw.
#pragma once

#include "zu/base/zu_alertable.h"
#include "zu/base/zu_monitor.h"
#include "zu/base/zu_region.h"
#include "zu/base/zu_signalable.h"
#include "zu/base/zu_thread.h"
#include "zu/base/zu_timer.h"
#include "zu/hpp/zu_ref.hpp"
#include "zu/hpp/zu_text.hpp"
#include "zu/io/zu_byte_sink.h"
#include "zu/io/zu_byte_source.h"
#include "zu/io/zu_char_sink.h"
#include "zu/io/zu_char_source.h"
#include "zu/io/zu_line_sink.h"
#include "zu/io/zu_line_source.h"
#include "zu/runtime/zu_runtime.h"
#include "zu/runtime/zu_sort.h"

#include <new>

/// The module that objects with lambdas belong to: null in a program.  A module declares itself and defines this ahead of
/// the header, so that it is not unloaded while such an object lives:
///
///     #include "zu/runtime/zu_module.h"
///     ZU___MODULE_DECLARE( gauge )
///     #define ZU_HPP_MODULE &gauge___module
///     #include "zu/zu.hpp"
#ifndef ZU_HPP_MODULE
#define ZU_HPP_MODULE nullptr
#endif

namespace zu {

/// Keeps the library started as long as it lives; everything that uses the library lives within.
class Runtime {
public:
    Runtime( const char *identifier, const char *friendlyName, const char *version, ZU_INT flags = 0,
             ZU_RUNTIME_PRINT_FUNC printFunc = nullptr )
    {
        zuRuntimeStartup( flags, -1, printFunc, identifier, friendlyName, version );
    }
    Runtime( const Runtime & ) = delete;
    Runtime &operator=( const Runtime & ) = delete;
    ~Runtime()
    {
        zuRuntimeShutdown();
    }
};

/// Is inside of a monitor as long as it lives.
class MonitorGuard {
public:
    explicit MonitorGuard( ZU_MONITOR *monitor ) : entered( monitor )
    {
        zuMonitorEnter( entered );
    }
    explicit MonitorGuard( const Ref<ZU_MONITOR> &monitor ) : MonitorGuard( monitor.get() )
    {
    }
    MonitorGuard( const MonitorGuard & ) = delete;
    MonitorGuard &operator=( const MonitorGuard & ) = delete;
    ~MonitorGuard()
    {
        zuMonitorLeave( entered );
    }

private:
    ZU_MONITOR *entered;
};
enum class RegionMode : ZU_BOOL { shared = ZU_FALSE, exclusive = ZU_TRUE };
/// Is inside of a region as long as it lives.
class RegionGuard {
public:
    RegionGuard( ZU_REGION *region, RegionMode mode ) : entered( region )
    {
        zuRegionEnter( entered, static_cast<ZU_BOOL>( mode ) );
    }
    RegionGuard( const Ref<ZU_REGION> &region, RegionMode mode ) : RegionGuard( region.get(), mode )
    {
    }
    RegionGuard( const RegionGuard & ) = delete;
    RegionGuard &operator=( const RegionGuard & ) = delete;
    ~RegionGuard()
    {
        zuRegionLeave( entered );
    }

private:
    ZU_REGION *entered;
};

// Each program and each module has all of this for itself, so that an object belongs to where its lambda is: what is
// hidden, the dynamic linker does not replace by what another file has under the same name.
#pragma GCC visibility push( hidden )

namespace internal {

// An object with any number of lambdas in it, and how to destroy them.
struct Closure {
    ZU_OBJ obj;
    void ( *destroy )( Closure *closure );
};
template <typename CALLS>
struct ClosureOf : Closure {
    CALLS calls;
};
inline void closureFree( ZU_OBJ *thisObj )
{
    Closure *closure = reinterpret_cast<Closure *>( thisObj );
    closure->destroy( closure );
}
inline ZU_SORT closureSort = ZU___SORT_INITIALIZER( "ZU_HPP_CLOSURE", ZU_HPP_MODULE, closureFree, nullptr, nullptr );

template <typename CALLS>
Ref<ZU_OBJ> closure( CALLS calls )
{
    static_assert( alignof( ClosureOf<CALLS> ) <= alignof( std::max_align_t ), "an object is aligned as malloc does" );
    static_assert( std::is_nothrow_move_constructible_v<CALLS>, "a capture may throw when it is moved" );
    Ref<ZU_OBJ> made = adopt( zu___ObjCreate( sizeof( ClosureOf<CALLS> ), &closureSort ) );
    auto *closure = reinterpret_cast<ClosureOf<CALLS> *>( made.get() );
    closure->destroy = []( Closure *dying ) { static_cast<ClosureOf<CALLS> *>( dying )->calls.~CALLS(); };
    new ( &closure->calls ) CALLS( std::move( calls ) );
    return made;
}
template <typename CALLS>
CALLS &callsOf( ZU_OBJ *closure )
{
    return reinterpret_cast<ClosureOf<CALLS> *>( closure )->calls;
}
template <typename CALL>
void callClosure( ZU_OBJ *closure )
{
    callsOf<CALL>( closure )();
}
template <typename CALL>
void callArgument()
{
    Ref<ZU_OBJ> argument = adopt( zuThreadUnlatchArgument() );
    callsOf<CALL>( argument.get() )();
}
// What a sink's second lambda is where none is given
struct FlushNothing {
    bool operator()() const noexcept
    {
        return true;
    }
};
template <typename FIRST, typename SECOND>
struct Two {
    FIRST first;
    SECOND second;
};

} // namespace internal

// Threads and listeners
/// Starts a thread that calls `call()`; an empty Ref if the system refuses.
template <typename CALL>
[[nodiscard]] Ref<ZU_THREAD> spawn( std::string_view name, CALL call,
                                    ZU_THREAD_PRIORITY priority = ZU_THREAD_PRIORITY_NORMAL )
{
    return adopt( zuThreadTrySpawn( text( name ).get(), internal::callArgument<CALL>,
                                    internal::closure( std::move( call ) ).get(), priority ) );
}
/// Calls `call()` on the calling thread, which the library has not started, as a thread of the library.
template <typename CALL>
void encapsulate( CALL call )
{
    zuThreadEncapsulate( internal::callArgument<CALL>, internal::closure( std::move( call ) ).get() );
}
/// Returns a listener for signals that calls `call()`.
template <typename CALL>
[[nodiscard]] Ref<ZU_SIGNALABLE> signalable( CALL call )
{
    return adopt( zuSignalableCreate( internal::callClosure<CALL>, internal::closure( std::move( call ) ).get() ) );
}
/// Returns a listener for alerts that calls `call()`.
template <typename CALL>
[[nodiscard]] Ref<ZU_ALERTABLE> alertable( CALL call )
{
    return adopt( zuAlertableCreate( internal::callClosure<CALL>, internal::closure( std::move( call ) ).get() ) );
}
/// Returns a timer that calls `call()` on the thread of the timers.
template <typename CALL>
[[nodiscard]] Ref<ZU_TIMER> timer( CALL call )
{
    return adopt( zuTimerCreate( internal::callClosure<CALL>, internal::closure( std::move( call ) ).get() ) );
}

// Streams.  The lambdas stand for the functions of a backend, without the closure; see zu___ByteSinkCreate and its kin.
/// Returns a sink of `write( bytes, byteCount )` and, where something is held back, `flush()`; both return a truth value.
template <typename WRITE, typename FLUSH = internal::FlushNothing>
[[nodiscard]] Ref<ZU_BYTE_SINK> byteSink( WRITE write, FLUSH flush = FLUSH() )
{
    using Calls = internal::Two<WRITE, FLUSH>;
    return adopt( zu___ByteSinkCreate(
        []( ZU_OBJ *closure, const uint8_t *bytes, ZU_INT byteCount ) -> ZU_BOOL {
            return internal::callsOf<Calls>( closure ).first( bytes, byteCount );
        },
        []( ZU_OBJ *closure ) -> ZU_BOOL { return internal::callsOf<Calls>( closure ).second(); },
        internal::closure( Calls{ std::move( write ), std::move( flush ) } ).get() ) );
}
/// Returns a source of `read( bytes, maxByteCount )`, which returns how many bytes it has stored, less than 0 if it has
/// failed.
template <typename READ>
[[nodiscard]] Ref<ZU_BYTE_SOURCE> byteSource( READ read )
{
    return adopt( zu___ByteSourceCreate(
        []( ZU_OBJ *closure, uint8_t *bytes, ZU_INT maxByteCount, ZU_INT *bytesRead ) -> ZU_BOOL {
            ZU_INT count = internal::callsOf<READ>( closure )( bytes, maxByteCount );
            *bytesRead = count < 0 ? 0 : count;
            return count >= 0;
        },
        nullptr, internal::closure( std::move( read ) ).get() ) );
}
/// Returns a sink of `write( chars, charCount )` and, where something is held back, `flush()`.
template <typename WRITE, typename FLUSH = internal::FlushNothing>
[[nodiscard]] Ref<ZU_CHAR_SINK> charSink( WRITE write, FLUSH flush = FLUSH() )
{
    using Calls = internal::Two<WRITE, FLUSH>;
    return adopt( zu___CharSinkCreate(
        []( ZU_OBJ *closure, const ZU_CHAR *chars, ZU_INT charCount ) -> ZU_BOOL {
            return internal::callsOf<Calls>( closure ).first( chars, charCount );
        },
        []( ZU_OBJ *closure ) -> ZU_BOOL { return internal::callsOf<Calls>( closure ).second(); },
        internal::closure( Calls{ std::move( write ), std::move( flush ) } ).get() ) );
}
/// Returns a source of `read( chars, maxCharCount )`, as byteSource takes it.
template <typename READ>
[[nodiscard]] Ref<ZU_CHAR_SOURCE> charSource( READ read )
{
    return adopt( zu___CharSourceCreate(
        []( ZU_OBJ *closure, ZU_CHAR *chars, ZU_INT maxCharCount, ZU_INT *charsRead ) -> ZU_BOOL {
            ZU_INT count = internal::callsOf<READ>( closure )( chars, maxCharCount );
            *charsRead = count < 0 ? 0 : count;
            return count >= 0;
        },
        internal::closure( std::move( read ) ).get() ) );
}
/// Returns a sink of `write( line )`, with a ZU_STRING *, and, where something is held back, `flush()`.
template <typename WRITE, typename FLUSH = internal::FlushNothing>
[[nodiscard]] Ref<ZU_LINE_SINK> lineSink( WRITE write, FLUSH flush = FLUSH() )
{
    using Calls = internal::Two<WRITE, FLUSH>;
    return adopt( zu___LineSinkCreate(
        []( ZU_OBJ *closure, ZU_STRING *line ) -> ZU_BOOL { return internal::callsOf<Calls>( closure ).first( line ); },
        []( ZU_OBJ *closure ) -> ZU_BOOL { return internal::callsOf<Calls>( closure ).second(); },
        internal::closure( Calls{ std::move( write ), std::move( flush ) } ).get() ) );
}
/// Returns a source of `read()`, which returns a line as a Ref<ZU_STRING>, an empty one at the end.
template <typename READ>
[[nodiscard]] Ref<ZU_LINE_SOURCE> lineSource( READ read )
{
    return adopt( zu___LineSourceCreate(
        []( ZU_OBJ *closure, ZU_STRING **zus ) -> ZU_BOOL {
            *zus = internal::callsOf<READ>( closure )().release();
            return ZU_TRUE;
        },
        internal::closure( std::move( read ) ).get() ) );
}

#pragma GCC visibility pop

} // namespace zu
