// The one exception of the system, with the numbers that the run time itself uses.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace corvane {

using Long = std::int32_t;
using LongLong = std::int64_t; // identifiers of databases, sizes of files
using Single = float;
using Double = double;

namespace FailureNumber {
inline constexpr Long Unique = -1; // raised by service loading for what it finds wrong itself
inline constexpr Long InvalidProcedureCall = 5;
inline constexpr Long Overflow = 6;
inline constexpr Long OutOfMemory = 7;
inline constexpr Long Subscript = 9;
inline constexpr Long TypeMismatch = 13;
inline constexpr Long OutOfStackSpace = 28;
inline constexpr Long FileNotFound = 53;
inline constexpr Long FileAccess = 75;
inline constexpr Long PathNotFound = 76;
inline constexpr Long ObjectNotSet = 91;
inline constexpr Long CannotCreateObject = 429;
inline constexpr Long NoSuchMember = 438;
inline constexpr Long WrongNumberOfArguments = 450;
inline constexpr Long KeyInUse = 457;
// Base of the numbers that an application defines (0x80040000).
inline constexpr Long ObjectErrorBase = -2147221504;
// A C++ exception that isn't a Failure (0x80004005).
inline constexpr Long Foreign = -2147467259;
} // namespace FailureNumber

class __attribute__((visibility("default"))) Failure : public std::exception {
public:
    // An empty source reads "Corvane", an empty description the run time's text for the number.
    explicit Failure(Long lNumber, std::string sDescription = {}, std::string sSource = {}, std::string sHelpFile = {},
                     Long lHelpContext = 0);
    ~Failure() override;

    const char* what() const noexcept override { return Description.c_str(); }

    Long Number;
    std::string Source;
    std::string Description;
    std::string HelpFile;
    Long HelpContext;
    Long Line = 0; // in the definition file that was being read; 0 when there is none
    // Which procedure of a plug-in the failure left, as in "in NewBirds (BirdsService.OnNewBird, service Birds,
    // Services/Birds.xml:12)"; those that had called it follow behind a comma. Empty outside of plug-ins.
    std::string Context;
};

// Throws a Failure. Out of line, so that the checks of inlined code stay small.
[[noreturn, gnu::visibility("default")]] void Fail(Long lNumber, std::string sDescription = {},
                                                   std::string sSource = {});

// The exception being handled, as a Failure: a foreign one keeps its text, std::bad_alloc becomes 7.
// To be called in a catch block only.
[[gnu::visibility("default")]] Failure CurrentFailure();

} // namespace corvane
