// The suite's string library: conversion between UTF-8 and wide strings.
#pragma once

#include <string>

#include "assistant_export.h"

// Wide strings hold UTF-16 on Windows and UTF-32 on the POSIX port. Both conversions are exact on well-formed text,
// code points beyond U+FFFF and embedded zeros included; where text is ill-formed (a lone surrogate, a stray or missing
// continuation byte, an overlong form, a value beyond U+10FFFF) U+FFFD takes the place of each maximal subpart, see
// CodePoint.h. Neither throws anything but std::bad_alloc. Any thread.
class ASSISTANT_EXPORT PlenixBase {
 public:
  static std::string UnicodeToUTF8(const std::wstring& text);
  static std::wstring UTF8ToUnicode(const std::string& text);
};
