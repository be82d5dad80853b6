// Marks what a host of the tests exports.
#pragma once

#ifdef _WIN32
#define FAKE_HOST_EXPORT extern "C" __declspec(dllexport)
#else
#define FAKE_HOST_EXPORT extern "C" [[gnu::visibility("default")]]
#endif
