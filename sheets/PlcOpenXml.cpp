#include "sheets/PlcOpenXml.h"

#include "model/Numbers.h"
#include "sheets/AsciiText.h"
#include "sheets/Markup.h"

namespace orvista {

namespace {

constexpr std::string_view coordinates = R"(    <coordinateInfo>
      <fbd><scaling x="1" y="1"/></fbd>
      <ld><scaling x="1" y="1"/></ld>
      <sfc><scaling x="1" y="1"/></sfc>
    </coordinateInfo>
  </contentHeader>
  <types>
    <dataTypes/>
    <pous/>
  </types>
)";

std::string xmlText(std::string_view utf8) {
    return escapedForMarkup(withoutControls(utf8));
}

/// Two hyphens together, or one at the end, do not stand in a comment.
std::string xmlComment(std::string_view utf8) {
    std::string text;
    for (const char character : withoutControls(utf8)) {
        if (character == '-' && text.ends_with('-'))
            text += ' ';
        text += character;
    }
    return "<!-- " + text + " -->";
}

std::string documentation(std::string_view utf8) {
    return "<documentation><xhtml:p>" + xmlText(utf8) + "</xhtml:p></documentation>";
}

std::string xmlVariable(const PlcVariable& variable) {
    const std::string text = nameOf(variable.item) + "; " + variable.text;
    if (!variable.isAddressable)
        return "          " + xmlComment(variable.name + ": " + text) + "\n";
    std::string xml = "          <variable name=\"" + variable.name + "\">\n            <type><";
    xml.append(variable.type).append("/></type>\n");
    if (!variable.initial.empty())
        xml += "            <initialValue><simpleValue value=\"" + variable.initial + "\"/></initialValue>\n";
    return xml + "            " + documentation(text) + "\n          </variable>\n";
}

std::string xmlBuffer(const PlcBuffer& buffer) {
    return "          <variable name=\"" + buffer.name +
           "\">\n            <type><array><dimension lower=\"0\" upper=\"" + decimalText(buffer.count - 1) +
           "\"/><baseType><" + std::string(buffer.type) + "/></baseType></array></type>\n            " +
           documentation(buffer.text) + "\n          </variable>\n";
}

std::string xmlHead(const Project& project, const AddressHead& head) {
    std::string text = "Addresses of " + projectFileNameOf(project);
    if (!head.display.empty())
        text += "; display: " + head.display;
    if (!head.fingerprint.empty())
        text += "; fingerprint of the project: " + head.fingerprint;
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<project xmlns=\"http://www.plcopen.org/xml/tc6_0201\" "
           "xmlns:xhtml=\"http://www.w3.org/1999/xhtml\">\n"
           "  <fileHeader companyName=\"\" productName=\"Orvista Message Editor\" productVersion=\"" +
           head.release + "\" creationDateTime=\"" + head.time + "\" contentDescription=\"" + xmlText(text) +
           "\"/>\n  <contentHeader name=\"" + xmlText(project.ProjName) + "\">\n" + std::string(coordinates);
}

} // namespace

std::string plcOpenXml(const PlcVariables& variables, const Project& project, const AddressHead& head) {
    const std::string name = variables.prefix + std::string(plc::globals);
    std::string xml = xmlHead(project, head) + "  <instances>\n    <configurations>\n" +
                      "      <configuration name=\"" + name + "\">\n        <globalVars name=\"" + name +
                      "\">\n";
    for (const PlcVariable& variable : variables.items)
        xml += xmlVariable(variable);
    for (const PlcBuffer& buffer : variables.buffers)
        xml += xmlBuffer(buffer);
    return xml + "        </globalVars>\n      </configuration>\n    </configurations>\n  </instances>\n"
                 "</project>\n";
}

} // namespace orvista
