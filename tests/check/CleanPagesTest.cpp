#include "check/ProjectCheck.h"
#include "display/PageLayout.h"
#include "script/MessagePage.h"
#include "script/WizardLists.h"
#include "tests/check/Reopened.h"
#include "tests/check/ScriptFindings.h"
#include "tests/support/RandomChoices.h"
#include "tests/support/StoredBitmaps.h"

#include <gtest/gtest.h>

#include <string>

/// Whatever page the message wizard composes, there is nothing to find in it as long as its text fits, its
/// fields have as many blanks as they need, its colours differ and its bitmap is there.
namespace orvista {
namespace {

constexpr int columns = 128;

/// What applying a page of the wizard makes of a message.
void addPage(std::string& message, const std::string& page) {
    message = message == clearScript ? page : message + "\r\n" + page;
}

class Generator : public testing::RandomChoices {
public:
    using RandomChoices::RandomChoices;

    Project project() {
        Project project;
        for (FloatVariable& variable : project.RegVar) {
            variable.width = std::to_string(3 + below(6));
            variable.precision = "1";
            variable.defaultValue = std::to_string(below(10));
        }
        for (BooleanVariable& variable : project.CoilVar) {
            variable.onText = std::string(below(9), 'O');
            variable.offText = std::string(1 + below(9), 'f');
        }
        return project;
    }

    MessageForm form(const FieldFormats& formats) {
        MessageForm form;
        form.bitmap = below(8) == 0;
        form.txtPath = below(2) == 0 ? "stencil.bmp" : "colour.BMP";
        form.cbFgClr = below(4);
        form.cbBgClr = (form.cbFgClr + 1 + below(3)) % 4;
        form.cbFont = below(2);
        compose(form, formats);
        chooseEffects(form);
        return form;
    }

private:
    /// Characters and up to four fields, as much as fits.
    void compose(MessageForm& form, const FieldFormats& formats) {
        std::size_t room = static_cast<std::size_t>(columns / fontStyles[form.cbFont].cellWidth);
        std::size_t fields = 0;
        do {
            if (fields < form.fields.size() && below(4) == 0) {
                FieldChoice& field = form.fields[fields];
                field.cbVar = below(wizard::fieldSourceCount);
                field.cbVarFgClr = below(4);
                field.cbVarBgClr = (field.cbVarFgClr + 1 + below(3)) % 4;
                const auto width = static_cast<std::size_t>(widthOf(field.cbVar, formats));
                if (width > room)
                    break;
                form.txtText += "%" + std::to_string(width) + "v";
                room -= width;
                ++fields;
            } else {
                form.txtText += character();
                --room;
            }
        } while (room > 0 && below(20) != 0);
    }

    char character() {
        // All but the sign that begins a field.
        const auto byte = static_cast<char>(0x20 + below(0xE0));
        return byte == '%' ? ' ' : byte;
    }

    /// In the order of the wizard's list.
    static std::int64_t widthOf(std::size_t source, const FieldFormats& formats) {
        FieldElement field;
        field.value = wizard::fieldSources()[source].value;
        field.index = wizard::fieldSources()[source].index;
        return shownWidth(field, formats);
    }

    std::mt19937 random_;
};

TEST(CleanPages, TenThousandPagesOfTheWizardHaveNothingToFind) {
    StoredBitmaps bitmaps;
    bitmaps.store("stencil.bmp", pictureBytes(128, 16));
    bitmaps.store("colour.bmp", pictureBytes(100, 12, false));
    std::size_t pages = 0;
    for (unsigned seed = 0; pages < 10'000; ++seed) {
        Generator generator(seed);
        Project project = generator.project();
        const FieldFormats formats = fieldFormats(project);
        const auto addPages = [&](std::size_t every) {
            for (auto* table : {project.STDMSG.data(), project.ALTMSG.data()})
                for (std::size_t i = 0;
                     i < (table == project.ALTMSG.data() ? project.ALTMSG.size() : project.STDMSG.size());
                     i += every, ++pages)
                    addPage(table[i], BuildPartialScript(generator.form(formats), PathRules::posix()));
        };
        // Some messages get their first page only after they were opened again.
        addPages(2);
        project = reopened(project);
        addPages(1);
        project = reopened(project);
        const Findings findings = checkProject(project, bitmaps, columns);
        ASSERT_TRUE(findings.list.empty())
            << "seed " << seed << ", " << nameOf(findings.list[0].place.item) << ":"
            << findings.list[0].place.line << " " << findings.list[0].text << "\n"
            << (isMessage(findings.list[0].place.item) ? scriptOf(project, findings.list[0].place.item) : "");
    }
}

TEST(CleanPages, APageInAReopenedEmptyMessageFollowsAnEmptyPage) {
    Project project = reopened(Project());
    addPage(project.STDMSG[0], "CLEAR\r\nTEXT 0 0 RED BLACK \"a\"\r\nACT STILL 1000");
    project = reopened(project);
    EXPECT_EQ(project.STDMSG[0], "CLEAR\r\nCLEAR\r\nTEXT 0 0 RED BLACK \"a\"\r\nACT STILL 1000\r\n");
    EXPECT_EQ(checkProject(project, NoBitmaps(), columns), Findings{});
}

} // namespace
} // namespace orvista
