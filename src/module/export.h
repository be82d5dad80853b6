// Marks what the module exports.
#pragma once

#ifdef _WIN32
#define TSL_REGISTRATION_EXPORT __declspec(dllexport)
#else
#define TSL_REGISTRATION_EXPORT [[gnu::visibility("default")]]
#endif
