#include "platform/text/PlenixBase.h"

#include "platform/text/WideText.h"

std::string PlenixBase::UnicodeToUTF8(const std::wstring& text) { return platform::ToUtf8(text); }
std::wstring PlenixBase::UTF8ToUnicode(const std::string& text) { return platform::ToWide(text); }
