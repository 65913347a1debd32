#include "sheets/AddressTemplate.h"
#include "tests/sheets/NamedProject.h"
#include "tests/sheets/StructuredTextReader.h"
#include "tests/support/ExampleProject.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

#include <bit>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::NamedProject;
using testing::namedProject;
using ::testing::Not;

NamedProject tankLevel() {
    NamedProject named;
    named.project.ProjName = "PLANT";
    named.project.RegVar[11].defaultValue = "1.85 m";
    named.project.STDMSG[3] = "DISPVAR 0 0 RED BLACK RegVar12";
    named.notes.set(orvista::named("RegVar12"), {"TankLevel", "m", "Level of tank 1"});
    named.prefix = "LINE3_";
    return named;
}

TEST(StructuredText, HasALineForEachItem) {
    const NamedProject plant = tankLevel();
    EXPECT_EQ(plant.line("TankLevel"),
              "    LINE3_TankLevel : REAL := 1.85; (* m; holding register 40123, address 122, low word first "
              "(CDAB); STDMSG4: Level of tank 1 *)");
    EXPECT_EQ(plant.line("CoilVar2 "), "    LINE3_CoilVar2 : BOOL := FALSE; (* coil 00102, address 101 *)");
    EXPECT_EQ(plant.line("STDMSG4 "),
              "    LINE3_STDMSG4 : BOOL := FALSE; (* coil 00324, address 323; STDMSG4 *)");
    EXPECT_EQ(plant.line("Registers "),
              "    LINE3_Registers : ARRAY [0..127] OF WORD; (* holding registers, function "
              "16, at most 123 in a request, from address 100 *)");
}

TEST(StructuredText, HasRealLiteralsOfWhatTheDeviceReads) {
    for (const auto& [text, literal] :
         std::vector<std::pair<std::string, std::string>>{{"100", ":= 100.0;"},
                                                          {"-2.50", ":= -2.5;"},
                                                          {"1e30", ":= 1.0E+30;"},
                                                          {"1.5e-9x", ":= 1.5E-09;"},
                                                          {"", ":= 0.0;"},
                                                          {"1,85", ":= 1.0;"},
                                                          {"x", ":= 0.0;"},
                                                          {"3.4e38", ":= 3.4E+38;"},
                                                          {".5", ":= 0.5;"},
                                                          {"0.1", ":= 0.1;"}}) {
        NamedProject plant = tankLevel();
        plant.project.RegVar[11].defaultValue = text;
        EXPECT_THAT(plant.line("TankLevel"), HasSubstr(literal)) << text;
    }
    NamedProject plant = tankLevel();
    plant.project.RegVar[11].defaultValue = "-1e39";
    EXPECT_THAT(plant.line("TankLevel"), HasSubstr("LINE3_TankLevel : REAL; (* m; "));
    EXPECT_THAT(plant.line("TankLevel"), HasSubstr("; REAL cannot hold the default -1e39; "));
}

TEST(StructuredText, LeavesOutWhatIsNotAddressable) {
    NamedProject plant = tankLevel();
    plant.project.AnalogInput = 65520;
    EXPECT_THAT(
        plant.line("TankLevel"),
        HasSubstr("    (* LINE3_TankLevel: m; holding register, address 65542, low word first (CDAB); not "
                  "addressable; STDMSG4: Level of tank 1 *)"));
    EXPECT_THAT(plant.st(), Not(HasSubstr("    LINE3_TankLevel")));
}

TEST(StructuredText, KeepsCommentsApartFromTheProgram) {
    NamedProject plant = tankLevel();
    plant.notes.set(named("RegVar12"), {"", "", "(*)*) Größe é Ω ø \xCC\x81**)"});
    EXPECT_THAT(plant.line("RegVar12 "), HasSubstr(": ( * )* ) Grosse e ? o ** ) *)"));
    EXPECT_THAT(plant.line("RegVar12 ", StructuredTextLetters::Utf8),
                HasSubstr(": ( * )* ) Größe é Ω ø \xCC\x81** ) *)"));
}

TEST(PlcNames, AreJudgedWithTheirPrefix) {
    NamedProject plant = tankLevel();
    EXPECT_THAT(plant.faults(), IsEmpty());
    plant.prefix = "Reg";
    plant.notes.set(named("RegVar1"), {"Var2", "", ""});
    plant.notes.set(named("RegVar3"), {"isters", "", ""});
    plant.notes.set(named("STDMSG1"), {"_Max_", "", ""});
    plant.notes.set(named("STDMSG2"), {std::string(38, 'x'), "", ""});
    EXPECT_THAT(plant.faults(),
                ElementsAre("RegVar1: \"RegVar2\" is the name of RegVar2", "STDMSG1: \"Reg_Max_\" ends in _",
                            HasSubstr("STDMSG2: \"Regxxxxxxxxxxxxxxxxx")));
    plant.prefix = "";
    plant.notes = {};
    plant.notes.set(named("RegVar3"), {"realbits", "", ""});
    plant.notes.set(named("RegVar4"), {"Same", "", ""});
    plant.notes.set(named("ALTMSG4"), {"SAME", "", ""});
    EXPECT_THAT(plant.faults(), ElementsAre("RegVar3: \"realbits\" is a name of the program itself already",
                                            "ALTMSG4: \"SAME\" is a name of RegVar4 already"));
}

TEST(PlcNames, TakeAPrefixThatBeginsAName) {
    for (const char* const good : {"", "_", "LINE3_", "x", "V", "STDMSG"})
        EXPECT_EQ(plcPrefixFault(good), "") << good;
    EXPECT_EQ(plcPrefixFault("3x"), "begins with no letter or _");
    EXPECT_EQ(plcPrefixFault("a__"), "has two _ together");
    EXPECT_EQ(plcPrefixFault("a-"), "holds something else than letters A to Z, digits and _");
    EXPECT_EQ(plcPrefixFault(std::string(31, 'x')), "");
    EXPECT_EQ(plcPrefixFault(std::string(32, 'x')), "is longer than 31 characters");
}

TEST(PlcLists, OfTheExampleAreAsWrittenFromTheDescription) {
    NamedProject plant;
    plant.project = testing::exampleProject();
    plant.notes = testing::exampleNotes();
    plant.prefix = "LINE3_";
    EXPECT_EQ(plant.st(), testing::golden("addresses.st"));
    EXPECT_EQ(plant.xml(), testing::golden("addresses.xml"));
    plant.prefix = "";
    for (const std::string name : {"modbusscope.json", "home-assistant.yaml"})
        EXPECT_EQ(filledTemplate(
                      testing::fileBytes(ORVISTA_TEMPLATES "/" + name),
                      addressTemplateValues(plant.rows(), plant.variables(), plant.project, plant.head())),
                  testing::golden(name));
}

void expectBuffers(testing::StReader& st, const testing::RandomPlcProject& random) {
    for (const auto& item : random.items)
        if (item.isAddressable && item.kind != Kind::Float)
            st.set(item.plcName, item.flag ? 1 : 0);
    st.run();
    for (const auto& item : random.items) {
        if (!item.isAddressable)
            continue;
        if (item.kind != Kind::Float) {
            EXPECT_EQ(st.global(random.prefix + item.buffer).values[item.index].number, item.flag ? 1 : 0);
            continue;
        }
        const auto& registers = st.global(random.prefix + "Registers").values;
        const auto bits = item.value == 0.0F ? 0U : std::bit_cast<std::uint32_t>(item.value);
        EXPECT_EQ(registers[2 * item.index].number, bits & 0xFFFFU) << item.plcName;
        EXPECT_EQ(registers[2 * item.index + 1].number, bits >> 16U) << item.plcName;
    }
}

TEST(StructuredText, OfAThousandProjectsIsReadBack) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        const testing::RandomPlcProject random(seed);
        SCOPED_TRACE(seed);
        testing::StReader st(namedProject(random).st());
        std::size_t left = 0;
        for (const auto& item : random.items) {
            if (!item.isAddressable) {
                EXPECT_THAT(st.commentsAlone()[left++], HasSubstr("(* " + item.plcName + ": "));
                continue;
            }
            const testing::StVariable& found = st.global(item.plcName);
            EXPECT_EQ(found.type, item.kind == Kind::Float ? "REAL" : "BOOL");
            EXPECT_EQ(found.hasInitial, item.holdsValue);
            if (item.holdsValue) {
                EXPECT_EQ(found.values.front().number, static_cast<double>(item.value)) << item.plcName;
            }
            EXPECT_THAT(found.comment, HasSubstr(item.place()));
        }
        EXPECT_EQ(left, st.commentsAlone().size());
        if (seed % 100 == 0)
            expectBuffers(st, random);
        if (::testing::Test::HasFailure())
            return;
    }
}

struct Planted {
    const char* good;
    const char* bad;
};

TEST(StructuredText, FaultsArePlantedAndRefused) {
    NamedProject plant = tankLevel();
    plant.notes.set(named("CoilVar1"), {"PumpOn", "", "\xC3\xBC"});
    const std::string good = plant.st(StructuredTextLetters::Utf8);
    EXPECT_NO_THROW(testing::StReader{good});
    for (const auto& [from, to] :
         std::vector<Planted>{{"LINE3_TankLevel : REAL := 1.85;", "LINE3_TankLevel : REAL := 1.85"},
                              {"LINE3_TankLevel : REAL := 1.85;", "LINE3_TankLevel : REAL = 1.85;"},
                              {"LINE3_TankLevel : REAL := 1.85;", "LINE3_TankLevel : REAL := 2;"},
                              {"LINE3_TankLevel : REAL := 1.85;", "LINE3_TankLevel : REAL := 1.85E;"},
                              {"LINE3_TankLevel : REAL := 1.85;", "LINE3_TankLevel : REAL := 1,85;"},
                              {"LINE3_TankLevel : REAL := 1.85;", "LINE3_TankLevel : FLOAT := 1.85;"},
                              {"LINE3_TankLevel : REAL := 1.85;", "LINE3__TankLevel : REAL := 1.85;"},
                              {"LINE3_TankLevel : REAL := 1.85;", "3TankLevel : REAL := 1.85;"},
                              {"LINE3_TankLevel : REAL := 1.85;", "LINE3_regvar1 : REAL := 1.85;"},
                              {"LINE3_TankLevel : REAL := 1.85;", "Word : REAL := 1.85;"},
                              {"LINE3_TankLevel : REAL := 1.85;", "L\xC3\xA9vel : REAL := 1.85;"},
                              {"LINE3_PumpOn : BOOL := FALSE;", "LINE3_PumpOn : BOOL := 0.0;"},
                              {"Level of tank 1 *)", "Level of tank 1"},
                              {"Level of tank 1 *)", "Level (* of tank 1 *)"},
                              {"Level of tank 1 *)\r\n", "Level of tank 1 *)\n"},
                              {"LINE3_Registers[127]", "LINE3_Registers[128]"},
                              {"ARRAY [0..127] OF WORD; (*", "ARRAY [127..0] OF WORD; (*"},
                              {"LINE3_Booleans[0] := LINE3_PumpOn;", "LINE3_Booleans[0] := LINE3_PumpOff;"},
                              {"LINE3_Booleans[0] := LINE3_PumpOn;", "LINE3_Booleans[0] := LINE3_TankLevel;"},
                              {"LINE3_Booleans[0] := LINE3_PumpOn;", "LINE3_Booleans := LINE3_PumpOn;"},
                              {"(SHR(LINE3_Bits, 16));", "(SHR(LINE3_Bits, 16);"},
                              {"(SHR(LINE3_Bits, 16));", "(SHIFT(LINE3_Bits, 16));"},
                              {"    LINE3_PumpOn : BOOL;\r\n", ""},
                              {"    LINE3_PumpOn : BOOL;\r\n", "    LINE3_PumpOn : REAL;\r\n"},
                              {"END_IF;\r\nEND_IF;", "END_IF;"},
                              {"(Exponent < 255) DO", "(Exponent < 255)"},
                              {"END_VAR\r\n\r\nPROGRAM", "PROGRAM"},
                              {"END_PROGRAM", ""}}) {
        std::string planted = good;
        const std::size_t at = planted.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        EXPECT_THROW(testing::StReader(planted.replace(at, std::string_view(from).size(), to)),
                     testing::StFault)
            << to;
    }
}

} // namespace
} // namespace orvista
