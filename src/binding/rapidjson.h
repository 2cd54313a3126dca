#pragma once

// rapidjson as the framework uses it: the codecs, and the text form of failures. Its internal stack starts as a null
// pointer and adds offsets to it before its first allocation, which is harmless but which clang's undefined-behaviour
// sanitizer reports; its pointer-overflow check is turned off for these headers alone.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((no_sanitize("pointer-overflow"))), apply_to = function)
#endif
#include <rapidjson/error/en.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#if defined(__clang__)
#pragma clang attribute pop
#endif
