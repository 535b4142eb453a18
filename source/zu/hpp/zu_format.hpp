// zu_format.hpp: formatted text with arguments of any type, checked when the program is compiled.
//
//     zu::Ref<ZU_STRING> line = zu::format( "%s: %i of %i", name, done, total );
//     zu::appendFormat( line.inOut(), " (%.1r %%)", 100.0 * done / total );
//
// zu/base/zu_format_arg_list.h tells the language of formats.  What an argument may be, by its conversion:
//
//     %b, %c, %i, %A, %X, and "*"   an integer of any size, bool, a character, an enumeration
//     %r                            a floating-point number
//     %s                            a string or a Ref to one, null, or text of the standard library
//     %o                            an object of any class or a Ref to one, null, or text of the standard library
//     %lc, %lw                      terminated text, of char and of char16_t, or null
//     %lC, %lW                      the same without a terminator, and an integer: its length
//
// Text of the standard library is std::string, std::u16string, std::u32string, their views, and terminated text of their
// characters.  Narrow text is UTF-8, in formats as in arguments, and every character is one element of the result.
//
// From C++20 on a format that does not suit its arguments does not compile; the message names the argument by its
// position, with those that "*" takes counted.  In C++17 ZU_FORMAT checks likewise, and the functions check nothing. A
// format that is known at run time only is passed as zu::runtime( fmt ), or as a string; nobody checks it.
#pragma once

#include "zu/base/zu_string_format.h"
#include "zu/hpp/zu_text.hpp"
#include "zu/io/zu_print.h"

#include <cstdint>

namespace zu {
namespace internal {

// What an argument is to a format
enum class Kind : unsigned char {
    none,
    integer,
    real,
    null,
    string,    // a pointer to a string
    stringRef, // a Ref to one
    object,
    objectRef,
    narrow, // terminated text of char
    wide,   // of char16_t
    text,   // any other text of the standard library
    strange
};

template <typename T>
constexpr Kind kindOf() noexcept
{
    using Plain = std::decay_t<T>;
    using Target = std::remove_cv_t<std::remove_pointer_t<Plain>>;
    if constexpr ( std::is_enum_v<Plain> || std::is_integral_v<Plain> ) {
        return sizeof( Plain ) <= sizeof( ZU_INT ) ? Kind::integer : Kind::strange;
    } else if constexpr ( std::is_floating_point_v<Plain> ) {
        return Kind::real;
    } else if constexpr ( std::is_null_pointer_v<Plain> ) {
        return Kind::null;
    } else if constexpr ( std::is_same_v<Plain, Ref<ZU_STRING>> ) {
        return Kind::stringRef;
    } else if constexpr ( std::is_pointer_v<Plain> && std::is_same_v<Target, char> ) {
        return Kind::narrow;
    } else if constexpr ( std::is_pointer_v<Plain> && std::is_same_v<Target, char16_t> ) {
        return Kind::wide;
    } else if constexpr ( std::is_convertible_v<Plain, std::string_view> ||
                          std::is_convertible_v<Plain, std::u16string_view> ||
                          std::is_convertible_v<Plain, std::u32string_view> ) {
        return Kind::text;
    } else if constexpr ( std::is_same_v<Plain, ZU_STRING *> ) {
        return Kind::string;
    } else if constexpr ( std::is_pointer_v<Plain> && std::is_class_v<std::remove_pointer_t<Plain>> &&
                          !std::is_const_v<std::remove_pointer_t<Plain>> ) {
        return Kind::object;
    } else if constexpr ( std::is_convertible_v<Plain, Ref<ZU_OBJ>> ) {
        return Kind::objectRef;
    } else {
        return Kind::strange;
    }
}

// Walks through a format, one argument after the other.  The same walk checks a format when it is compiled and prepares
// it when it runs.
struct FormatWalk {
    const char *next;
    const char *name = nullptr; // of the conversion found last, null ahead of the first
    char wanted = 0;            // what the next argument is for: '*', 'C' for the length of text, or a conversion
    bool givesUp = false;       // has the flag "~"
    bool asksLength = false;    // text comes with its length, the argument after it
    bool anyConversion = false; // but "%%"
    bool broken = false;        // ends within a conversion, or has one that there is not

    constexpr explicit FormatWalk( const char *fmt ) noexcept : next( fmt )
    {
    }
    // Goes on to the next argument that the format takes; false if there is none.
    constexpr bool advance() noexcept
    {
        if ( asksLength ) {
            asksLength = false;
            wanted = '#';
            return true;
        }
        while ( inConversion || findConversion() ) {
            if ( takesNumber() ) {
                return true;
            }
            if ( takesValue() ) {
                return true;
            }
            if ( broken ) {
                return false;
            }
        }
        return false;
    }

private:
    bool inConversion = false;
    bool counted = false; // has the flag "#"

    constexpr bool findConversion() noexcept
    {
        while ( *next && *next != '%' ) {
            next++;
        }
        if ( !*next ) {
            return false;
        }
        inConversion = true;
        givesUp = counted = false;
        for ( next++; *next && isFlag( *next ); next++ ) {
            givesUp |= *next == '~';
            counted |= *next == '#';
        }
        return true;
    }
    static constexpr bool isFlag( char ch ) noexcept
    {
        return ch == '-' || ch == '_' || ch == '+' || ch == ' ' || ch == '0' || ch == '^' || ch == '\'' || ch == '#' ||
               ch == '~';
    }
    // Passes over width, precision and base; true at one that an argument gives.
    constexpr bool takesNumber() noexcept
    {
        while ( ( *next >= '0' && *next <= '9' ) || *next == '.' || *next == '!' || *next == ' ' ) {
            next++;
        }
        if ( *next == '*' ) {
            next++;
            wanted = '*';
            return true;
        }
        return false;
    }
    // Takes the name of the conversion; true if a value belongs to it.
    constexpr bool takesValue() noexcept
    {
        inConversion = false;
        name = next;
        wanted = *next;
        switch ( *next ) {
        case '%':
            next++;
            anyConversion |= counted;
            return false;
        case 'm':
            next++;
            anyConversion = true;
            return false;
        case 'b':
        case 'c':
        case 'i':
        case 'A':
        case 'X':
        case 'r':
        case 'o':
        case 's':
            next++;
            return anyConversion = true;
        case 'l':
            next++;
            if ( *next == 'c' || *next == 'C' || *next == 'w' || *next == 'W' ) {
                asksLength = *next == 'C' || *next == 'W';
                wanted = *next == 'c' || *next == 'C' ? 'n' : 'w';
                next++;
                return anyConversion = true;
            }
            break;
        default:
            break;
        }
        broken = true;
        return false;
    }
};

// What is wrong between a format and its arguments
enum class Fault : unsigned char {
    none,
    formatWithoutConversion,
    unknownConversion,
    tooFewArguments,
    tooManyArguments,
    argumentMustBeAnInteger,
    argumentMustBeAReal,
    argumentMustBeAString,
    argumentMustBeAnObject,
    argumentMustBeNarrowText,
    argumentMustBeWideText,
    argumentIsReleasedTwice // "~" takes over what a Ref or a temporary releases too
};
struct Verdict {
    Fault fault = Fault::none;
    int argument = 0; // its position, from 1 on
};

constexpr Fault judge( const FormatWalk &walk, Kind kind ) noexcept
{
    const bool isText = kind == Kind::narrow || kind == Kind::wide || kind == Kind::text;
    const bool isString = kind == Kind::string || kind == Kind::stringRef || kind == Kind::null || isText;
    switch ( walk.wanted ) {
    case 'r':
        return kind == Kind::real ? Fault::none : Fault::argumentMustBeAReal;
    case 's':
    case 'o':
        if ( !isString && ( walk.wanted == 's' || ( kind != Kind::object && kind != Kind::objectRef ) ) ) {
            return walk.wanted == 's' ? Fault::argumentMustBeAString : Fault::argumentMustBeAnObject;
        }
        return walk.givesUp && ( isText || kind == Kind::stringRef || kind == Kind::objectRef )
                   ? Fault::argumentIsReleasedTwice
                   : Fault::none;
    case 'n':
        return kind == Kind::narrow || kind == Kind::null ? Fault::none : Fault::argumentMustBeNarrowText;
    case 'w':
        return kind == Kind::wide || kind == Kind::null ? Fault::none : Fault::argumentMustBeWideText;
    default:
        return kind == Kind::integer ? Fault::none : Fault::argumentMustBeAnInteger;
    }
}
template <typename... Args>
constexpr Verdict judgeFormat( const char *fmt ) noexcept
{
    constexpr Kind KINDS[] = { kindOf<Args>()..., Kind::none };
    constexpr int COUNT = sizeof...( Args );
    FormatWalk walk( fmt );
    int argument = 0;
    while ( walk.advance() ) {
        if ( argument == COUNT ) {
            return { Fault::tooFewArguments, argument + 1 };
        }
        Fault fault = judge( walk, KINDS[ argument ] );
        argument++;
        if ( fault != Fault::none ) {
            return { fault, argument };
        }
    }
    if ( walk.broken ) {
        return { Fault::unknownConversion, argument + 1 };
    }
    if ( argument < COUNT ) {
        return { Fault::tooManyArguments, argument + 1 };
    }
    return { walk.anyConversion ? Fault::none : Fault::formatWithoutConversion, 0 };
}

// Ends the compilation with a message that has both parameters in it.
template <Fault FAULT, int ARGUMENT>
constexpr bool acceptFormat() noexcept
{
    static_assert( FAULT != Fault::formatWithoutConversion, "zu: the format has no conversion" );
    static_assert( FAULT != Fault::unknownConversion, "zu: the format has a conversion that there is not" );
    static_assert( FAULT != Fault::tooFewArguments, "zu: the format takes an argument more: see ARGUMENT" );
    static_assert( FAULT != Fault::tooManyArguments, "zu: the format does not take this argument: see ARGUMENT" );
    static_assert( FAULT != Fault::argumentMustBeAnInteger, "zu: this argument must be an integer: see ARGUMENT" );
    static_assert( FAULT != Fault::argumentMustBeAReal, "zu: this argument must be a real number: see ARGUMENT" );
    static_assert( FAULT != Fault::argumentMustBeAString, "zu: this argument must be a string: see ARGUMENT" );
    static_assert( FAULT != Fault::argumentMustBeAnObject, "zu: this argument must be an object: see ARGUMENT" );
    static_assert( FAULT != Fault::argumentMustBeNarrowText, "zu: this argument must be narrow text: see ARGUMENT" );
    static_assert( FAULT != Fault::argumentMustBeWideText, "zu: this argument must be UTF-16: see ARGUMENT" );
    static_assert( FAULT != Fault::argumentIsReleasedTwice, "zu: \"~\" needs a reference to take over: see ARGUMENT" );
    return true;
}

// Tells whether bytes are ASCII.  There is no way out of the loop, so that compilers know the outcome for a literal.
constexpr bool isAscii( const char *text, std::size_t length ) noexcept
{
    unsigned bits = 0;
    for ( std::size_t i = 0; i < length; i++ ) {
        bits |= static_cast<unsigned char>( text[ i ] );
    }
    return bits < 0x80;
}

// A format that comes at run time
struct RuntimeFormat {
    const char *fmt;
};

#if defined( __cpp_consteval )
// Not constant, so that a constant expression which gets here does not compile, and the compiler names it with what is
// wrong and the position of the argument.
template <Fault FAULT, int ARGUMENT>
void theFormatDoesNotSuitItsArguments();
template <Fault FAULT, int... NUMBERS>
constexpr void refuseFormat( Verdict verdict, std::integer_sequence<int, NUMBERS...> )
{
    (void)( ( verdict.fault == FAULT && verdict.argument == NUMBERS &&
              ( theFormatDoesNotSuitItsArguments<FAULT, NUMBERS>(), true ) ) ||
            ... );
}
template <int... FAULTS, typename NUMBERS>
constexpr void refuseFormat( Verdict verdict, std::integer_sequence<int, FAULTS...>, NUMBERS numbers )
{
    ( refuseFormat<static_cast<Fault>( FAULTS )>( verdict, numbers ), ... );
}
#define ZU___FORMAT_CONSTEVAL consteval
#else
#define ZU___FORMAT_CONSTEVAL constexpr
#endif

// A format for arguments of these types
template <typename... Args>
struct Format {
    const char *fmt;
    bool ascii;

    template <std::size_t SIZE>
    ZU___FORMAT_CONSTEVAL Format( const char ( &text )[ SIZE ] ) : fmt( text ), ascii( isAscii( text, SIZE ) )
    {
#if defined( __cpp_consteval )
        Verdict verdict = judgeFormat<Args...>( text );
        if ( verdict.fault != Fault::none ) {
            refuseFormat( verdict,
                          std::make_integer_sequence<int, static_cast<int>( Fault::argumentIsReleasedTwice ) + 1>(),
                          std::make_integer_sequence<int, static_cast<int>( sizeof...( Args ) ) + 2>() );
        }
#endif
    }
    constexpr Format( RuntimeFormat format ) noexcept
        : fmt( format.fmt ), ascii( isAscii( format.fmt, std::char_traits<char>::length( format.fmt ) ) )
    {
    }
};
template <typename T>
struct Same {
    using type = T;
};

// Arguments as the C interface takes them: a ZU_INT, a double or a pointer.  Text becomes a string that lives until the
// call is over, unless the walk has found that it is taken as it is.
template <Kind KIND>
struct Argument {
    template <typename T>
    Argument( const T &value, bool ) noexcept : passed( convert( value ) )
    {
    }
    template <typename T>
    static auto convert( const T &value ) noexcept
    {
        static_assert( KIND != Kind::strange, "a format takes numbers, objects and text" );
        if constexpr ( KIND == Kind::integer ) {
            return static_cast<ZU_INT>( value );
        } else if constexpr ( KIND == Kind::real ) {
            return static_cast<double>( value );
        } else if constexpr ( KIND == Kind::null ) {
            return static_cast<void *>( nullptr );
        } else if constexpr ( KIND == Kind::stringRef || KIND == Kind::objectRef ) {
            return static_cast<void *>( value.get() );
        } else {
            return static_cast<void *>( value );
        }
    }
    auto get() const noexcept
    {
        return passed;
    }
    std::conditional_t<KIND == Kind::integer, ZU_INT, std::conditional_t<KIND == Kind::real, double, void *>> passed;
};
template <typename UNIT>
struct TerminatedArgument {
    TerminatedArgument( const UNIT *value, bool raw ) : passed( value )
    {
        if ( value && !raw ) {
            made = text( std::basic_string_view<UNIT>( value ) );
            passed = made.get();
        }
    }
    const void *get() const noexcept
    {
        return passed;
    }
    Ref<ZU_STRING> made;
    const void *passed;
};
template <>
struct Argument<Kind::narrow> : TerminatedArgument<char> {
    using TerminatedArgument<char>::TerminatedArgument;
};
template <>
struct Argument<Kind::wide> : TerminatedArgument<char16_t> {
    using TerminatedArgument<char16_t>::TerminatedArgument;
};
template <>
struct Argument<Kind::text> {
    template <typename T>
    Argument( const T &value, bool ) : made( make( value ) )
    {
    }
    template <typename T>
    static Ref<ZU_STRING> make( const T &value )
    {
        if constexpr ( std::is_convertible_v<T, std::string_view> ) {
            return text( std::string_view( value ) );
        } else if constexpr ( std::is_convertible_v<T, std::u16string_view> ) {
            return text( std::u16string_view( value ) );
        } else {
            return text( std::u32string_view( value ) );
        }
    }
    const void *get() const noexcept
    {
        return made.get();
    }
    Ref<ZU_STRING> made;
};

// A format as the C interface takes it, and which of the first 64 arguments it takes as they are.  Conversions of
// terminated text are turned to those of strings: the C interface reads narrow text and UTF-16 unit by unit, in which a
// character beyond U+FFFF is two elements.  Nearly all formats are ASCII, and need not become strings.
struct PreparedFormat {
    Ref<ZU_STRING> fmt; // empty: it is ASCII, and `narrow`
    const char *narrow;
    std::string changed; // what `narrow` is, if it is not the original
    std::uint64_t raw = 0;

    PreparedFormat( const char *format, bool ascii, bool anyText ) : narrow( format )
    {
        if ( anyText ) {
            change( format );
        }
        if ( !ascii ) {
            fmt = text( std::string_view( narrow ) );
        }
    }
    explicit PreparedFormat( ZU_STRING *format ) : fmt( share( format ) ), narrow( nullptr )
    {
        raw = ~std::uint64_t( 0 ); // a string is passed on as it is, and so is terminated text
    }
    PreparedFormat( const PreparedFormat & ) = delete;
    PreparedFormat &operator=( const PreparedFormat & ) = delete;

private:
    void change( const char *format )
    {
        changed = format;
        FormatWalk walk( format );
        std::size_t gone = 0; // characters that `changed` has less by now
        for ( int argument = 0; walk.advance(); argument++ ) {
            if ( walk.wanted != 'n' && walk.wanted != 'w' ) {
                continue;
            }
            if ( walk.givesUp || walk.asksLength ) {
                raw |= argument < 64 ? std::uint64_t( 1 ) << argument : 0;
            } else {
                std::size_t place = static_cast<std::size_t>( walk.name - format ) - gone;
                changed[ place ] = 's';
                changed.erase( place + 1, 1 );
                gone++;
            }
        }
        narrow = changed.c_str();
    }
};
template <typename... Args>
inline constexpr bool ANY_TERMINATED = ( ( kindOf<Args>() == Kind::narrow || kindOf<Args>() == Kind::wide ) || ... );

// Calls one of the two, with a format that is a string or ASCII, and with converted arguments.
template <typename CALL, typename... Passed>
auto callEither( const PreparedFormat &prepared, const CALL &call, Passed... passed )
{
    return prepared.fmt ? call( prepared.fmt.get(), passed... ) : call( prepared.narrow, passed... );
}
template <typename CALL, std::size_t... POSITIONS, typename... Args>
auto callWith( const PreparedFormat &prepared, const CALL &call, std::index_sequence<POSITIONS...>,
               const Args &...args )
{
    return callEither(
        prepared, call,
        Argument<kindOf<Args>()>( args, POSITIONS < 64 && ( prepared.raw >> POSITIONS & 1 ) != 0 ).get()... );
}
// Calls `call` with the format and with the arguments as the C interface takes them.
template <typename CALL, typename... Args>
auto callFormat( const Format<Args...> &fmt, const CALL &call, const Args &...args )
{
    return callWith( PreparedFormat( fmt.fmt, fmt.ascii, ANY_TERMINATED<Args...> ), call,
                     std::index_sequence_for<Args...>(), args... );
}
template <typename CALL, typename... Args>
auto callFormat( ZU_STRING *fmt, const CALL &call, const Args &...args )
{
    return callWith( PreparedFormat( fmt ), call, std::index_sequence_for<Args...>(), args... );
}

// What is called, with a format of either kind
struct Create {
    template <typename... All>
    Ref<ZU_STRING> operator()( ZU_STRING *fmt, All... all ) const
    {
        return adopt( zuStringCreateFromFormat( fmt, all... ) );
    }
    template <typename... All>
    Ref<ZU_STRING> operator()( const char *fmt, All... all ) const
    {
        return adopt( zuStringCreateFromFormatCstr( fmt, -1, all... ) );
    }
};
struct Insert {
    ZU_STRING **dest;
    ZU_INT idx;

    template <typename... All>
    void operator()( ZU_STRING *fmt, All... all ) const
    {
        zuStringInsertFormat( dest, idx, fmt, all... );
    }
    template <typename... All>
    void operator()( const char *fmt, All... all ) const
    {
        zuStringInsertFormatCstr( dest, idx, fmt, -1, all... );
    }
};
struct Append {
    ZU_STRING **dest;

    template <typename... All>
    void operator()( ZU_STRING *fmt, All... all ) const
    {
        zuStringAppendFormat( dest, fmt, all... );
    }
    template <typename... All>
    void operator()( const char *fmt, All... all ) const
    {
        zuStringAppendFormatCstr( dest, fmt, -1, all... );
    }
};
struct Print {
    template <typename... All>
    void operator()( ZU_STRING *fmt, All... all ) const
    {
        zuPrintFormat( fmt, all... );
    }
    template <typename... All>
    void operator()( const char *fmt, All... all ) const
    {
        zuPrintFormatCstr( fmt, -1, all... );
    }
};

} // namespace internal

/// A format for arguments of these types, checked as those of zu::format are, for functions that hand formats on:
///
///     template <typename... Args>
///     void complain( zu::FormatFor<Args...> fmt, const Args &...args )
template <typename... Args>
using FormatFor = internal::Format<typename internal::Same<Args>::type...>;

/// Marks a format that is not known before the program runs.  Formats must not come from outside the program.
[[nodiscard]] constexpr internal::RuntimeFormat runtime( const char *fmt ) noexcept
{
    return { fmt };
}

/// Returns a new string.
template <typename... Args>
[[nodiscard]] Ref<ZU_STRING> format( FormatFor<Args...> fmt, const Args &...args )
{
    return internal::callFormat( fmt, internal::Create(), args... );
}
template <typename... Args>
[[nodiscard]] Ref<ZU_STRING> format( ZU_STRING *fmt, const Args &...args )
{
    return internal::callFormat( fmt, internal::Create(), args... );
}
/// Inserts the text ahead of position `idx`.
template <typename... Args>
void insertFormat( ZU_STRING **dest, ZU_INT idx, FormatFor<Args...> fmt, const Args &...args )
{
    internal::callFormat( fmt, internal::Insert{ dest, idx }, args... );
}
template <typename... Args>
void insertFormat( ZU_STRING **dest, ZU_INT idx, ZU_STRING *fmt, const Args &...args )
{
    internal::callFormat( fmt, internal::Insert{ dest, idx }, args... );
}
/// Appends the text.
template <typename... Args>
void appendFormat( ZU_STRING **dest, FormatFor<Args...> fmt, const Args &...args )
{
    internal::callFormat( fmt, internal::Append{ dest }, args... );
}
template <typename... Args>
void appendFormat( ZU_STRING **dest, ZU_STRING *fmt, const Args &...args )
{
    internal::callFormat( fmt, internal::Append{ dest }, args... );
}
/// Inserts the text at the front.
template <typename... Args>
void prependFormat( ZU_STRING **dest, FormatFor<Args...> fmt, const Args &...args )
{
    internal::callFormat( fmt, internal::Insert{ dest, 0 }, args... );
}
template <typename... Args>
void prependFormat( ZU_STRING **dest, ZU_STRING *fmt, const Args &...args )
{
    internal::callFormat( fmt, internal::Insert{ dest, 0 }, args... );
}
/// Prints the text by the print function that the library was started with, as UTF-8 or whatever that makes of it.
template <typename... Args>
void print( FormatFor<Args...> fmt, const Args &...args )
{
    internal::callFormat( fmt, internal::Print(), args... );
}

namespace internal {
template <typename... Args>
struct Types {
    static constexpr Verdict judge( const char *fmt ) noexcept
    {
        return judgeFormat<Args...>( fmt );
    }
};
template <typename... Args>
Types<Args...> typesOf( const Args &... );
} // namespace internal

} // namespace zu

/// zu::format with the check of the format in C++17 too: ZU_FORMAT( "%s: %i", name, count ).  `fmt` is a literal.
#define ZU_FORMAT( fmt, ... )                                                                                      \
    ( static_cast<void>(                                                                                           \
          zu::internal::acceptFormat<decltype( zu::internal::typesOf( __VA_ARGS__ ) )::judge( fmt ).fault,         \
                                     decltype( zu::internal::typesOf( __VA_ARGS__ ) )::judge( fmt ).argument>() ), \
      zu::format( fmt, __VA_ARGS__ ) )
