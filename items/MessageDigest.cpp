#include "items/MessageDigest.h"

#include "items/PageContent.h"
#include "model/Windows1252.h"
#include "script/BitmapNames.h"
#include "script/ScriptInterpreter.h"

#include <utility>

namespace orvista {

MessageDigest messageDigest(std::string_view script, const FieldFormats& formats) {
    const InterpretedScript interpreted = interpretScript(script);
    MessageDigest digest;
    digest.text = utf8FromWindows1252(firstText(interpreted, formats));
    digest.variables = variablesShown(interpreted.pages);
    for (const ScriptPage& page : interpreted.pages) {
        digest.pages += page.elements.empty() && page.steps.empty() ? 0 : 1;
        digest.drawsSomething = digest.drawsSomething || !page.elements.empty();
    }
    for (const std::string& name : bitmapNames(interpreted.pages))
        digest.bitmaps.push_back(utf8FromWindows1252(name));
    return digest;
}

bool MessageDigests::update(const Project& project, std::size_t most) {
    if (FieldFormats formats = fieldFormats(project); formats != formats_) {
        formats_ = std::move(formats);
        read_ = {}; // a text's fields are written with their widths
    }
    std::size_t bytes = 0;
    bool isComplete = true;
    for (const Item message : allMessages()) {
        const std::string& script = scriptOf(project, message);
        auto& read = read_[messagePosition(message)];
        if (read && read->script == script)
            continue;
        read.reset();
        isComplete = isComplete && bytes < most;
        if (bytes >= most)
            continue;
        read = Read{script, messageDigest(script, formats_)};
        bytes += script.size();
    }
    return isComplete;
}

} // namespace orvista
