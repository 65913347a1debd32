#include "sheets/MessageBook.h"

#include "check/ProjectCheck.h"
#include "display/FieldValues.h"
#include "display/PageText.h"
#include "display/Programme.h"
#include "display/SettledPage.h"
#include "items/PageActs.h"
#include "items/PageContent.h"
#include "model/Quotation.h"
#include "script/VariableUse.h"

#include <algorithm>
#include <chrono>
#include <map>

namespace orvista {

namespace {

/// The display's clock, set to UTC.
LocalTime utcClock(UtcMoment moment) {
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(std::chrono::floor<std::chrono::seconds>(moment - day));
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(time.hours().count()),
            static_cast<int>(time.minutes().count()),
            static_cast<int>(time.seconds().count())};
}

bool isToSee(const ScriptPage& page) {
    return !page.elements.empty() || !page.steps.empty();
}

bool hasFields(const ScriptPage& page) {
    return std::ranges::any_of(page.elements, [](const ScriptElement& element) {
        return std::holds_alternative<FieldElement>(element);
    });
}

/// At most 200 bytes of what is to be read, cut at a blank where there is one.
std::string shortReading(std::string text) {
    constexpr std::size_t most = 200;
    if (text.size() > most) {
        text.resize(most);
        text.resize(std::min(text.size(), text.find_last_of(' ')));
        text += "...";
    }
    return text;
}

/// Makes the messages of a book.
class BookMaker {
public:
    BookMaker(const Project& project, const BitmapProvider& bitmaps, const BookWishes& wishes,
              const std::vector<AddressRow>& places)
        : project_(project),
          bitmaps_(bitmaps),
          wishes_(wishes),
          formats_(fieldFormats(project)),
          values_(chosenValues(ValueChoice::Defaults, project).at(utcClock(wishes.moment))),
          widest_(chosenValues(ValueChoice::Widest, project).at(utcClock(wishes.moment))) {
        for (const AddressRow& place : places)
            places_.emplace(place.item, place);
    }

    BookMessage message(const AddressRow& place) const {
        Programme programme({wishes_.columns}, formats_);
        programme.add(place.item, scriptOf(project_, place.item), bitmaps_);
        BookMessage message;
        message.place = place;
        message.milliseconds = programme.duration();
        std::size_t number = 0;
        for (std::size_t page = 0; page < programme.pageCount(); ++page) {
            if (!isToSee(programme.pages()[page]))
                continue;
            ++number;
            if (message.pages.size() < mostPagesOfBook(wishes_.columns))
                message.pages.push_back(pageOf(programme, page, number));
            else
                ++message.pagesLeftOut;
        }
        addVariables(message, programme);
        return message;
    }

private:
    BookPage pageOf(const Programme& programme, std::size_t page, std::size_t number) const {
        const DrawnPage& drawn = programme.pages()[page];
        BookPage made{.number = number,
                      .milliseconds = programme.pageStart(page + 1) - programme.pageStart(page),
                      .shown = settledPage(programme, page, values_),
                      .widest = {},
                      .acts = pageActs(programme, page),
                      .texts = {},
                      .reads = printable(shortReading(pageText(drawn, formats_, values_)))};
        if (wishes_.widest && hasFields(drawn))
            made.widest = settledPage(programme, page, widest_);
        for (const ScriptElement& element : drawn.elements)
            if (const auto* text = std::get_if<TextElement>(&element))
                made.texts.push_back(printable(contentText(drawn, *text, formats_)));
        return made;
    }

    void addVariables(BookMessage& message, const Programme& programme) const {
        VariableUse use;
        for (const DrawnPage& page : programme.pages())
            use |= variablesShown(page);
        const auto add = [&](Kind kind, const auto& used) {
            for (std::size_t index = 0; index < used.size(); ++index)
                if (used[index])
                    message.variables.push_back(places_.at({kind, index}));
        };
        add(Kind::Float, use.floats);
        add(Kind::Boolean, use.booleans);
    }

    const Project& project_;
    const BitmapProvider& bitmaps_;
    const BookWishes& wishes_;
    FieldFormats formats_;
    DisplayValues values_;
    DisplayValues widest_;
    std::map<Item, AddressRow> places_;
};

void addFindings(MessageBook& book, const Findings& findings) {
    for (const Finding& finding : findings.list) {
        const auto about = std::ranges::find(book.messages, finding.place.item,
                                             [](const BookMessage& message) { return message.place.item; });
        (about == book.messages.end() ? book.otherFindings : about->findings).push_back(finding);
    }
    book.findingsNotListed = findings.notListed();
}

} // namespace

std::size_t mostPagesOfBook(int columns) {
    constexpr std::size_t most = 100;
    constexpr std::size_t fewest = 4;
    constexpr std::size_t mostDotsAcross = most * PanelSize::usualColumns; // of all pages beside each other
    return std::clamp(mostDotsAcross / static_cast<std::size_t>(columns), fewest, most);
}

MessageBook messageBook(const Project& project, const ProjectNotes& notes, const BitmapProvider& bitmaps,
                        const BookWishes& wishes, const BookStep& step) {
    MessageBook book;
    book.columns = wishes.columns;
    book.addresses = addressList(project);
    addNotes(book.addresses, notes);
    const BookMaker maker(project, bitmaps, wishes, book.addresses);
    for (const AddressRow& row : book.addresses) {
        if (!isMessage(row.item) || !row.isUsed)
            continue;
        step();
        book.messages.push_back(maker.message(row));
    }
    if (wishes.addresses == AddressRows::UsedOnly)
        std::erase_if(book.addresses, [](const AddressRow& row) { return !row.isUsed; });
    addFindings(book, checkProject(project, bitmaps, wishes.columns));
    return book;
}

} // namespace orvista
