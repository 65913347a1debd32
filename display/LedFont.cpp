#include "display/LedFont.h"

#include "display/FontSheets.h"

#include <charconv>
#include <map>
#include <string>
#include <string_view>

namespace orvista {

namespace {

/// Pictures by heading: "41", "41f", "acute".
using Sheet = std::map<std::string_view, Glyph>;
using Glyphs = std::array<Glyph, 256>;

struct Composition {
    unsigned char character;
    char base;
    std::string_view accent;
};

/// Characters made of a letter and an accent; the accents alone stand over a blank, and the soft hyphen has
/// no accent.
constexpr Composition compositions[] = {
    {0x60, ' ', "grave"},      {0x88, ' ', "circumflex"}, {0x8A, 'S', "caron"},
    {0x8E, 'Z', "caron"},      {0x98, ' ', "tilde"},      {0x9A, 's', "caron"},
    {0x9E, 'z', "caron"},      {0x9F, 'Y', "diaeresis"},  {0xA8, ' ', "diaeresis"},
    {0xAD, '-', ""},           {0xB4, ' ', "acute"},      {0xB8, ' ', "cedilla"},
    {0xC0, 'A', "grave"},      {0xC1, 'A', "acute"},      {0xC2, 'A', "circumflex"},
    {0xC3, 'A', "tilde"},      {0xC4, 'A', "diaeresis"},  {0xC5, 'A', "ring"},
    {0xC7, 'C', "cedilla"},    {0xC8, 'E', "grave"},      {0xC9, 'E', "acute"},
    {0xCA, 'E', "circumflex"}, {0xCB, 'E', "diaeresis"},  {0xCC, 'I', "grave"},
    {0xCD, 'I', "acute"},      {0xCE, 'I', "circumflex"}, {0xCF, 'I', "diaeresis"},
    {0xD1, 'N', "tilde"},      {0xD2, 'O', "grave"},      {0xD3, 'O', "acute"},
    {0xD4, 'O', "circumflex"}, {0xD5, 'O', "tilde"},      {0xD6, 'O', "diaeresis"},
    {0xD9, 'U', "grave"},      {0xDA, 'U', "acute"},      {0xDB, 'U', "circumflex"},
    {0xDC, 'U', "diaeresis"},  {0xDD, 'Y', "acute"},      {0xE0, 'a', "grave"},
    {0xE1, 'a', "acute"},      {0xE2, 'a', "circumflex"}, {0xE3, 'a', "tilde"},
    {0xE4, 'a', "diaeresis"},  {0xE5, 'a', "ring"},       {0xE7, 'c', "cedilla"},
    {0xE8, 'e', "grave"},      {0xE9, 'e', "acute"},      {0xEA, 'e', "circumflex"},
    {0xEB, 'e', "diaeresis"},  {0xEC, 'i', "grave"},      {0xED, 'i', "acute"},
    {0xEE, 'i', "circumflex"}, {0xEF, 'i', "diaeresis"},  {0xF1, 'n', "tilde"},
    {0xF2, 'o', "grave"},      {0xF3, 'o', "acute"},      {0xF4, 'o', "circumflex"},
    {0xF5, 'o', "tilde"},      {0xF6, 'o', "diaeresis"},  {0xF9, 'u', "grave"},
    {0xFA, 'u', "acute"},      {0xFB, 'u', "circumflex"}, {0xFC, 'u', "diaeresis"},
    {0xFD, 'y', "acute"},      {0xFF, 'y', "diaeresis"}};

std::string_view takeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(line.size() + 1);
    return line;
}

std::uint8_t rowBits(std::string_view picture) {
    unsigned bits = 0;
    for (std::size_t column = 0; column < picture.size(); ++column)
        if (picture[column] == '#')
            bits |= 0x80U >> column;
    return static_cast<std::uint8_t>(bits);
}

int fontNumber(std::string_view text, int base) {
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, base);
    return value;
}

Sheet readSheet(std::string_view text) {
    Sheet sheet;
    Glyph* picture = nullptr;
    std::size_t row = 0;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (line.empty() || line.front() == ';')
            continue;
        if (line.front() == '.' || line.front() == '#') {
            if (picture != nullptr)
                picture->rows.at(row++) = rowBits(line);
            continue;
        }
        const auto blank = line.find(' ');
        picture = &sheet[line.substr(0, blank)];
        row = static_cast<std::size_t>(fontNumber(line.substr(blank + 1), 10));
    }
    return sheet;
}

std::string heading(char character) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(character);
    return {digits[code / 16U], digits[code % 16U]};
}

Glyph pictureOf(const Sheet& sheet, std::string_view name) {
    const auto found = sheet.find(name);
    return found == sheet.end() ? Glyph{} : found->second;
}

/// How far an accent is lowered: small letters of the large font leave more room than capitals.
std::size_t accentShift(LedFont font, const Composition& composition) {
    const bool isCapital = composition.base >= 'A' && composition.base <= 'Z';
    return font == LedFont::Large8x15 && !isCapital && composition.accent != "cedilla" ? 2 : 0;
}

Glyph compose(const Sheet& sheet, const Composition& composition, std::size_t shift) {
    const std::string base = heading(composition.base);
    const auto flat = sheet.find(base + "f");
    Glyph result = flat == sheet.end() ? pictureOf(sheet, base) : flat->second;
    const Glyph accent = pictureOf(sheet, composition.accent);
    for (std::size_t row = shift; row < result.rows.size(); ++row)
        result.rows[row] |= accent.rows[row - shift];
    return result;
}

Glyphs makeFont(LedFont font, std::string_view text) {
    const Sheet sheet = readSheet(text);
    Glyphs glyphs;
    for (const auto& [name, picture] : sheet)
        if (name.size() == 2)
            glyphs[static_cast<std::size_t>(fontNumber(name, 16))] = picture;
    for (const Composition& composition : compositions)
        glyphs[composition.character] = compose(sheet, composition, accentShift(font, composition));
    return glyphs;
}

} // namespace

const Glyph& glyph(LedFont font, unsigned char character) {
    static const Glyphs small = makeFont(LedFont::Small5x7, smallFontSheet);
    static const Glyphs large = makeFont(LedFont::Large8x15, largeFontSheet);
    return (font == LedFont::Small5x7 ? small : large)[character];
}

} // namespace orvista
