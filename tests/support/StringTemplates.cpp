#include "tests/support/StringTemplates.h"

template class std::basic_string<char>;
template class std::basic_string_view<char>;
template class std::vector<std::string>;
template std::string std::operator+(const std::string&, const std::string&);
template std::string std::operator+(const std::string&, const char*);
template std::string std::operator+(const char*, const std::string&);
template std::string std::operator+(const char*, std::string&&);
template std::string std::operator+(std::string&&, const std::string&);
template std::string std::operator+(std::string&&, const char*);
template std::string std::operator+(std::string&&, std::string&&);
