#include "model/Files.h"
#include "model/FetchedFiles.h"
#include "model/Lines.h"
#include "model/SystemPath.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Hands out at most `step` bytes at a time, so that every line end falls on a border once.
class DribblingSource final : public ByteSource {
public:
    DribblingSource(std::string_view bytes, std::size_t step) : inner_(bytes), step_(step) {}
    std::size_t read(char* buffer, std::size_t size) override {
        return inner_.read(buffer, std::min(size, step_));
    }

private:
    MemorySource inner_;
    std::size_t step_;
};

std::vector<std::string> linesOf(ByteSource& source) {
    LineReader reader(source);
    std::vector<std::string> lines;
    for (std::string line; reader.next(line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> linesOf(std::string_view bytes) {
    MemorySource source(bytes);
    return linesOf(source);
}

TEST(LineReader, EndsLinesAtEveryKindOfEnd) {
    EXPECT_THAT(linesOf("a\r\nb\nc\rd"), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(linesOf("a\r\r\n\n\rb"), ElementsAre("a", "", "", "", "b"));
    EXPECT_THAT(linesOf("a\r\n"), ElementsAre("a"));
    EXPECT_THAT(linesOf("a\r"), ElementsAre("a"));
    EXPECT_THAT(linesOf("\n"), ElementsAre(""));
    EXPECT_THAT(linesOf(""), IsEmpty());
}

TEST(LineReader, ReadsTheSameWhateverTheSourceHandsOut) {
    const std::string_view bytes = "\xEF\xBB\xBFone\r\ntwo\rthree\n\r\n\r\rlast";
    for (std::size_t step = 1; step <= bytes.size(); ++step) {
        DribblingSource source(bytes, step);
        EXPECT_THAT(linesOf(source), ElementsAre("one", "two", "three", "", "", "", "last")) << step;
    }
}

TEST(LineReader, SkipsAByteOrderMarkAtTheStartOnly) {
    EXPECT_THAT(linesOf("\xEF\xBB\xBF"
                        "a\n\xEF\xBB\xBF"
                        "b"),
                ElementsAre("a", "\xEF\xBB\xBF"
                                 "b"));
    EXPECT_THAT(linesOf("\xEF\xBB"), ElementsAre("\xEF\xBB"));
    EXPECT_THAT(linesOf("\xEF\xBB\xBF"), IsEmpty());
}

TEST(LineReader, TakesNulAndControlZAsOrdinary) {
    using namespace std::string_literals;
    EXPECT_THAT(linesOf("a\0b\x1A\nc"s), ElementsAre("a\0b\x1A"s, "c"));
}

TEST(LineReader, HasNoLengthLimit) {
    const std::string longLine(200'000, 'x');
    EXPECT_THAT(linesOf(longLine + "\r\nend"), ElementsAre(longLine, "end"));
}

TEST(FirstDifferentLine, IsTheFirstThatIsNotTheSameInBoth) {
    EXPECT_EQ(firstDifferentLine("a\r\nb\r\nc", "a\r\nB\r\nc"), 2U);
    EXPECT_EQ(firstDifferentLine("a", "b"), 1U);
    EXPECT_EQ(firstDifferentLine("a\r\nb", "a\nbc\nd"), 2U);
    EXPECT_EQ(firstDifferentLine("a\r\nb", "a\r\nb\r\nc"), 3U);
    EXPECT_EQ(firstDifferentLine("a", "a"), 2U);
    EXPECT_EQ(firstDifferentLine("", "a"), 1U);
}

TEST(FileSource, RefusesWhatIsNoFile) {
    const testing::TemporaryFolder folder;
    EXPECT_THROW(FileSource(folder.file("missing")), OpenFailure);
    EXPECT_THROW(FileSource{folder.path()}, OpenFailure);
#ifndef _WIN32
    EXPECT_THROW(FileSource("/dev/zero"), OpenFailure);
#endif
}

#ifndef _WIN32
TEST(FileSource, ReadsPipesWhereThatIsWanted) {
    char byte = 'x';
    EXPECT_EQ(FileSource("/dev/null", Pipes::AreRead).read(&byte, 1), 0U);
    EXPECT_EQ(FileSource("/dev/zero", Pipes::AreRead).read(&byte, 1), 1U);
    EXPECT_EQ(byte, '\0');
    EXPECT_THROW(FileSource("/", Pipes::AreRead), OpenFailure);
}
#endif

TEST(FileSource, TakesAPathThatIsNoTextAsMissing) {
    const testing::TemporaryFolder folder;
    EXPECT_THROW(FileSource(folder.path() + "/\xFF\xC3name"), OpenFailure);
}

#ifdef _WIN32
TEST(Utf8Path, IsEmptyForANameThatIsNoText) {
    EXPECT_EQ(utf8Path(L"half \xD83D"), "");
    EXPECT_EQ(utf8Path(L"whole \xD83D\xDE00"), "whole \xF0\x9F\x98\x80");
}
#endif

#ifdef __linux__
TEST(FileSource, TellsAFailureAfterOpening) {
    FileSource source("/proc/self/mem"); // nothing can be read at its start
    char byte = 0;
    EXPECT_THROW(source.read(&byte, 1), ReadFailure);
}
#endif

TEST(FileSink, KeepsWhatWasWrittenWhenItIsNotClosed) {
    const testing::TemporaryFolder folder;
    {
        FileSink sink(folder.file("bytes"));
        sink.write("so far");
    }
    EXPECT_EQ(testing::fileBytes(folder.file("bytes")), "so far");
}

TEST(FileSink, WritesExactBytes) {
    using namespace std::string_literals;
    const testing::TemporaryFolder folder;
    FileSink sink(folder.file("bytes"));
    sink.write("a\r\nb\n\0"s);
    sink.close();
    EXPECT_EQ(testing::fileBytes(folder.file("bytes")), "a\r\nb\n\0"s);
}

#ifndef _WIN32
TEST(FileSink, TellsWhatOnlyShowsWhenClosing) {
    FileSink sink("/dev/full");
    sink.write("buffered");
    EXPECT_THROW(sink.close(), WriteFailure);
}

TEST(FileSink, TellsAFullDiskWhileWriting) {
    FileSink sink("/dev/full");
    EXPECT_THROW(sink.write(std::string(1 << 20, 'x')), WriteFailure);
}
#endif

TEST(FetchedFiles, MoveToAFolderInTheMiddleOfAFile) {
    FetchedFiles files;
    const std::string half(FetchedFiles::mostInMemory / 2 + 1, 'x');
    files.add("first")->write("1");
    const auto sink = files.add("second");
    sink->write(half);
    EXPECT_FALSE(files.folder());
    EXPECT_EQ(files.inMemory().size(), 2U);
    sink->write(half);
    sink->close();
    const auto third = files.add("third");
    third->write("3");
    third->close();
    ASSERT_TRUE(files.folder());
    const std::string folder = *files.folder();
    EXPECT_EQ(testing::fileBytes(folder + "/first"), "1");
    EXPECT_EQ(testing::fileBytes(folder + "/second"), half + half);
    EXPECT_EQ(testing::fileBytes(folder + "/third"), "3");
}

} // namespace
} // namespace orvista
