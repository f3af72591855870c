// For the Linux compile check only: the marks of Apple's headers that a compiler for a Linux target would
// otherwise drop. Never part of a real build.
#pragma once

// The oldest macOS the bundle runs on, as 1200 for 12.0; the check's CMake passes it from the same setting
// as the bundle's deployment target.
#ifndef VENDEL_MACOS_MINIMUM
#error "VENDEL_MACOS_MINIMUM (as 1200 for macOS 12.0) must be defined"
#endif

// Availability attributes only act on an Apple target, where a call of an API deprecated in a macOS at or
// before the deployment target warns. Here each deprecation is a plain one, present exactly when Apple's
// compiler would warn for this minimum.
#define APPLE_DEPRECATED(version, message) APPLE_DEPRECATED_##version(message)
#define APPLE_DEPRECATED_MARK(message) __attribute__((deprecated(message)))
#if VENDEL_MACOS_MINIMUM >= 1010
#define APPLE_DEPRECATED_10_10(message) APPLE_DEPRECATED_MARK(message)
#else
#define APPLE_DEPRECATED_10_10(message)
#endif
#if VENDEL_MACOS_MINIMUM >= 1011
#define APPLE_DEPRECATED_10_11(message) APPLE_DEPRECATED_MARK(message)
#else
#define APPLE_DEPRECATED_10_11(message)
#endif
#if VENDEL_MACOS_MINIMUM >= 1012
#define APPLE_DEPRECATED_10_12(message) APPLE_DEPRECATED_MARK(message)
#else
#define APPLE_DEPRECATED_10_12(message)
#endif
#if VENDEL_MACOS_MINIMUM >= 1013
#define APPLE_DEPRECATED_10_13(message) APPLE_DEPRECATED_MARK(message)
#else
#define APPLE_DEPRECATED_10_13(message)
#endif
#if VENDEL_MACOS_MINIMUM >= 1014
#define APPLE_DEPRECATED_10_14(message) APPLE_DEPRECATED_MARK(message)
#else
#define APPLE_DEPRECATED_10_14(message)
#endif
#if VENDEL_MACOS_MINIMUM >= 1100
#define APPLE_DEPRECATED_11_0(message) APPLE_DEPRECATED_MARK(message)
#else
#define APPLE_DEPRECATED_11_0(message)
#endif
#if VENDEL_MACOS_MINIMUM >= 1200
#define APPLE_DEPRECATED_12_0(message) APPLE_DEPRECATED_MARK(message)
#else
#define APPLE_DEPRECATED_12_0(message)
#endif
#if VENDEL_MACOS_MINIMUM >= 1300
#define APPLE_DEPRECATED_13_0(message) APPLE_DEPRECATED_MARK(message)
#else
#define APPLE_DEPRECATED_13_0(message)
#endif
#if VENDEL_MACOS_MINIMUM >= 1400
#define APPLE_DEPRECATED_14_0(message) APPLE_DEPRECATED_MARK(message)
#else
#define APPLE_DEPRECATED_14_0(message)
#endif

#ifndef API_AVAILABLE
#define API_AVAILABLE(...)
#endif

// Apple's NS_ENUM and NS_OPTIONS as its headers expand them for C++: an enumeration is a type of its own,
// which no integer and no other enumeration converts to, while options stay plain integers. GNUstep's own
// macros keep their meaning for its headers.
#define APPLE_ENUM(type, name)                                                                               \
    enum name : type name;                                                                                   \
    enum name : type
#define APPLE_OPTIONS(type, name)                                                                            \
    type name;                                                                                               \
    enum : name

#ifndef NS_RETURNS_INNER_POINTER
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#endif
