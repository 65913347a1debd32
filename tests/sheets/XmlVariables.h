#pragma once

#include <expat.h>

#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orvista::testing {

/// The global variables of PLCopen XML, as another reader of XML finds them.
class XmlVariables {
public:
    struct Variable {
        std::string type; ///< of an array's elements
        std::string value;
        std::string text;
        std::string upper; ///< an array's last index
    };
    std::map<std::string, Variable> variables;

    /// \throws std::runtime_error
    explicit XmlVariables(std::string_view xml) {
        XML_Parser parser = XML_ParserCreateNS(nullptr, '|');
        XML_SetUserData(parser, this);
        XML_SetElementHandler(parser, &XmlVariables::start, &XmlVariables::end);
        XML_SetCharacterDataHandler(parser, &XmlVariables::characters);
        const auto status = XML_Parse(parser, xml.data(), static_cast<int>(xml.size()), 1);
        const char* const fault = XML_ErrorString(XML_GetErrorCode(parser));
        XML_ParserFree(parser);
        if (status != XML_STATUS_OK)
            throw std::runtime_error(fault);
    }

private:
    static XmlVariables& self(void* data) { return *static_cast<XmlVariables*>(data); }

    static std::string attribute(const XML_Char** attributes, std::string_view name) {
        for (; *attributes != nullptr; attributes += 2)
            if (*attributes == name)
                return attributes[1];
        return "";
    }

    static void start(void* data, const XML_Char* name, const XML_Char** attributes) {
        XmlVariables& xml = self(data);
        const std::string_view tag(name);
        constexpr std::string_view space = "http://www.plcopen.org/xml/tc6_0201|";
        xml.path_ += "/" + std::string(tag.starts_with(space) ? tag.substr(space.size()) : tag);
        if (xml.path_ == variablePath) {
            const auto [place, isNew] = xml.variables.emplace(attribute(attributes, "name"), Variable());
            if (!isNew)
                throw std::runtime_error("a name twice");
            xml.current_ = &place->second;
        } else if (xml.path_ == std::string(variablePath) + "/initialValue/simpleValue")
            xml.current_->value = attribute(attributes, "value");
        else if (xml.path_ == std::string(variablePath) + "/type/array/dimension")
            xml.current_->upper = attribute(attributes, "upper");
        else
            for (const char* const parent : {"/type/", "/type/array/baseType/"})
                if (xml.path_.starts_with(std::string(variablePath) + parent))
                    xml.current_->type = xml.path_.substr(xml.path_.rfind('/') + 1);
    }

    static void end(void* data, const XML_Char*) { self(data).path_.resize(self(data).parentLength()); }

    static void characters(void* data, const XML_Char* text, int length) {
        if (self(data).path_ == std::string(variablePath) + "/documentation/http://www.w3.org/1999/xhtml|p")
            self(data).current_->text.append(text, static_cast<std::size_t>(length));
    }

    /// The path without its last name, whose address of another namespace holds slashes, too.
    std::size_t parentLength() const {
        constexpr std::string_view xhtml = "/http://www.w3.org/1999/xhtml|";
        const std::size_t foreign = path_.rfind(xhtml);
        return foreign == std::string::npos ? path_.rfind('/') : foreign;
    }

    static constexpr std::string_view variablePath =
        "/project/instances/configurations/configuration/globalVars/variable";

    std::string path_;
    Variable* current_ = nullptr;
};

inline float literalValue(const std::string& literal) {
    return literal == "TRUE" ? 1.0F : literal == "FALSE" ? 0.0F : std::strtof(literal.c_str(), nullptr);
}

} // namespace orvista::testing
