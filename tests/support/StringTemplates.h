#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What sources that are not optimised leave to StringTemplates.cpp; every one of them begins with this.
extern template class std::basic_string<char>;
extern template class std::basic_string_view<char>;
extern template class std::vector<std::string>;
extern template std::string std::operator+(const std::string&, const std::string&);
extern template std::string std::operator+(const std::string&, const char*);
extern template std::string std::operator+(const char*, const std::string&);
extern template std::string std::operator+(const char*, std::string&&);
extern template std::string std::operator+(std::string&&, const std::string&);
extern template std::string std::operator+(std::string&&, const char*);
extern template std::string std::operator+(std::string&&, std::string&&);
