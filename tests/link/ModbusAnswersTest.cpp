#include "link/ModbusAnswers.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;

Frame joined(Frame frame, const Frame& more) {
    frame.insert(frame.end(), more.begin(), more.end());
    return frame;
}

/// An answer from unit 255 to the requests' one transaction. \param body function code first
Frame answer(const Frame& body) {
    return joined({0x01, 0x02, 0x00, 0x00, 0x00, static_cast<std::uint8_t>(body.size() + 1), 0xFF}, body);
}

std::string failure(const Frame& request, const Frame& received) {
    try {
        answerData(request, received);
    } catch (const BadAnswer& bad) {
        return bad.what();
    }
    return {};
}

const Frame readTwenty = readCoilsRequest(300, 20);

TEST(ModbusAnswers, RequestsAreToldInWords) {
    EXPECT_EQ(requestInWords(readTwenty), "reading coils 300 to 319");
    EXPECT_EQ(requestInWords(readCoilsRequest(7, 1)), "reading coil 7");
    EXPECT_EQ(requestInWords(readRegistersRequest(100, 124)), "reading registers 100 to 223");
    EXPECT_EQ(requestInWords(coilRequest(65535, true)), "writing coil 65535");
    EXPECT_EQ(requestInWords(emergencyMessagesRequest(300, {})), "writing coils 300 to 319");
    EXPECT_EQ(requestInWords(registerPairRequest(100, 1.5F)), "writing registers 100 to 101");
}

TEST(ModbusAnswers, CoilsCountFromTheLowestBitOfTheFirstByte) {
    const Frame received = answer({0x01, 0x03, 0x05, 0x00, 0xF8});
    const auto data = answerData(readTwenty, received);
    ASSERT_TRUE(data);
    EXPECT_THAT(*data, ElementsAre(0x05, 0x00, 0xF8));
    for (std::size_t i = 0; i < 20; ++i)
        EXPECT_EQ(coilOf(*data, i), i == 0 || i == 2 || i == 19) << i;
}

TEST(ModbusAnswers, RegistersComeHighByteFirst) {
    const Frame received = answer({0x03, 0x04, 0x00, 0x01, 0x3F, 0x80});
    const auto data = answerData(readRegistersRequest(100, 2), received);
    ASSERT_TRUE(data);
    EXPECT_EQ(registerOf(*data, 0), 0x0001);
    EXPECT_EQ(registerOf(*data, 1), 0x3F80);
}

TEST(ModbusAnswers, WritingsAreConfirmedByWhatWasAskedFor) {
    const Frame pair = registerPairRequest(100, 1.5F);
    const Frame coil = coilRequest(5, true);
    const Frame block = emergencyMessagesRequest(300, {});
    EXPECT_TRUE(answerData(pair, answer({0x10, 0x00, 0x64, 0x00, 0x02}))->empty());
    EXPECT_TRUE(answerData(coil, answer({0x05, 0x00, 0x05, 0xFF, 0x00}))->empty());
    EXPECT_TRUE(answerData(block, answer({0x0F, 0x01, 0x2C, 0x00, 0x14}))->empty());
    EXPECT_EQ(failure(pair, answer({0x10, 0x00, 0x65, 0x00, 0x02})),
              "writing registers 100 to 101: the display confirms something else");
    EXPECT_EQ(failure(coil, answer({0x05, 0x00, 0x05, 0x00, 0x00})),
              "writing coil 5: the display confirms something else");
    EXPECT_EQ(failure(block, answer({0x0F, 0x01, 0x2C, 0x00})),
              "writing coils 300 to 319: the display confirms something else");
}

TEST(ModbusAnswers, AnAnswerIsAwaitedToItsLastByte) {
    const Frame whole = answer({0x01, 0x03, 0x05, 0x00, 0x08});
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(answerData(readTwenty, std::span(whole).first(size))) << size;
    EXPECT_TRUE(answerData(readTwenty, whole));
    EXPECT_EQ(failure(readTwenty, joined(whole, {0})),
              "reading coils 300 to 319: the answer is longer than its header says");
}

TEST(ModbusAnswers, ExceptionsAreToldInWords) {
    const auto exception = [](std::uint8_t code) { return failure(readTwenty, answer({0x81, code})); };
    EXPECT_EQ(exception(1), "reading coils 300 to 319: exception 1, illegal function");
    EXPECT_EQ(exception(2), "reading coils 300 to 319: exception 2, illegal data address");
    EXPECT_EQ(exception(11),
              "reading coils 300 to 319: exception 11, gateway target device failed to respond");
    for (const std::uint8_t code : {0, 7, 9, 12, 255})
        EXPECT_EQ(exception(code), "reading coils 300 to 319: exception " + std::to_string(code));
}

TEST(ModbusAnswers, AnExceptionTellsWhetherTheRequestMayBeCarriedOutAllTheSame) {
    for (unsigned code = 1; code <= 11; ++code)
        EXPECT_EQ(ExceptionAnswer(readTwenty, code).isRefusal(), code != 4 && code != 5 && code != 11)
            << code;
    EXPECT_THROW(answerData(readTwenty, answer({0x81, 2})), ExceptionAnswer);
}

TEST(ModbusAnswers, WhatIsNotModbusIsNotAwaited) {
    const std::string noModbus = "reading coils 300 to 319: the display's answer is not Modbus";
    const std::string garbage("\xDE\xAD\xBE\xEFgarbage");
    EXPECT_EQ(failure(readTwenty, Frame(garbage.begin(), garbage.end())), noModbus);
    const Frame sizes[] = {{1, 2, 0, 0, 0, 0, 255, 1},
                           {1, 2, 0, 0, 0, 1, 255, 1},
                           {1, 2, 0, 0, 0, 255, 255, 1},
                           {1, 2, 0, 0, 1, 3, 255, 1},
                           {1, 2, 0, 1, 0, 6, 255, 1}};
    for (const Frame& frame : sizes)
        EXPECT_EQ(failure(readTwenty, frame), noModbus);
    const Frame shortest{1, 2, 0, 0, 0, 2, 255};
    EXPECT_FALSE(answerData(readTwenty, shortest));
    const Frame longest{1, 2, 0, 0, 0, 254, 255, 1};
    EXPECT_FALSE(answerData(readTwenty, longest));
}

TEST(ModbusAnswers, AnswersToSomethingElseAreRefused) {
    Frame other = answer({0x01, 0x03, 0, 0, 0});
    other[1] = 0x03;
    EXPECT_EQ(failure(readTwenty, other), "reading coils 300 to 319: the display answers another request");
    other = answer({0x01, 0x03, 0, 0, 0});
    other[6] = 1;
    EXPECT_EQ(failure(readTwenty, other), "reading coils 300 to 319: unit 1 answers instead of unit 255");
    EXPECT_EQ(failure(readTwenty, answer({0x03, 0x03, 0, 0, 0})),
              "reading coils 300 to 319: the display answers with function 3");
    EXPECT_EQ(failure(readTwenty, answer({0x83, 0x02})),
              "reading coils 300 to 319: the display answers with function 131");
    EXPECT_EQ(failure(readTwenty, answer({0x81})),
              "reading coils 300 to 319: the display answers with function 129");
}

TEST(ModbusAnswers, AnswersOfAnotherSizeAreRefused) {
    const std::string text = "reading coils 300 to 319: the answer does not hold the 3 bytes asked for";
    EXPECT_EQ(failure(readTwenty, answer({0x01, 0x02, 0, 0})), text);
    EXPECT_EQ(failure(readTwenty, answer({0x01, 0x04, 0, 0, 0, 0})), text);
    EXPECT_EQ(failure(readTwenty, answer({0x01, 0x02, 0, 0, 0})), text); // says two, holds three
    EXPECT_EQ(failure(readTwenty, answer({0x01, 0x03, 0, 0})), text);
    EXPECT_EQ(failure(readTwenty, answer({0x01})), text);
    EXPECT_EQ(failure(readRegistersRequest(0, 2), answer({0x03, 0x02, 0, 0})),
              "reading registers 0 to 1: the answer does not hold the 4 bytes asked for");
}

TEST(ModbusAnswers, MissingAnswersAreToldInWords) {
    EXPECT_STREQ(answerCutOff(readTwenty, 0).what(),
                 "reading coils 300 to 319: the display ended the connection without an answer");
    EXPECT_STREQ(answerCutOff(readTwenty, 1).what(),
                 "reading coils 300 to 319: the display ended the connection after 1 byte of its answer");
    EXPECT_STREQ(answerTimedOut(readTwenty, 0).what(), "reading coils 300 to 319: no answer within 3 s");
    EXPECT_STREQ(answerTimedOut(readTwenty, 9, std::chrono::milliseconds(500)).what(),
                 "reading coils 300 to 319: only 9 bytes of an answer within 0.5 s");
}

} // namespace
} // namespace orvista
