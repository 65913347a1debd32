#pragma once

#include <string>

/// What the files of an untouched project hold, spelled out apart from the writers.
namespace orvista::testing {

inline std::string expectedMessages(const std::string& kind, int count, int changed = 0,
                                    const std::string& changedText = {}) {
    std::string text;
    for (int n = 1; n <= count; ++n)
        text += "DEFMSG " + kind + std::to_string(n) + "\r\n" + (n == changed ? changedText : "CLEAR") +
                "\r\nENDMSG\r\n";
    return text;
}

inline std::string expectedFloats(int start = 100) {
    std::string text;
    for (int n = 1; n <= 64; ++n)
        text += "DEFVAR RegVar" + std::to_string(n) +
                "\r\n"
                "    type      float\r\n"
                "    address   " +
                std::to_string(start + 2 * (n - 1)) +
                "\r\n"
                "    default   0.0\r\n"
                "    width     7\r\n"
                "    precision 3\r\n"
                "ENDVAR\r\n";
    return text;
}

inline std::string expectedBooleans(const std::string& gap, int start = 100) {
    std::string text;
    for (int n = 1; n <= 32; ++n)
        text += "DEFVAR CoilVar" + std::to_string(n) +
                "\r\n"
                "    type      bit\r\n"
                "    address   " +
                std::to_string(start + n - 1) +
                "\r\n"
                "    default   0\r\n"
                "    ON        \"ON\"\r\n"
                "    OFF       \"OFF\"\r\n" +
                gap + "ENDVAR\r\n";
    return text;
}

inline std::string expectedPlayList() {
    std::string text;
    for (int n = 1; n <= 40; ++n)
        text += "DISPMSG STDMSG" + std::to_string(n) + "\r\n";
    return text;
}

inline const std::string expectedAddressMap = "AnalogInput    100\r\n"
                                              "DigitalInput   100\r\n"
                                              "AlertMessage   300\r\n";

inline std::string expectedProjectFile(const std::string& ip) {
    return "[CONFIG]\r\n"
           "SerialPort   COM1\r\n"
           "IP   " +
           ip + "\r\n[MODBUS.ADR]\r\n" + expectedAddressMap + "[STDMSG.ILM]\r\n" +
           expectedMessages("STDMSG", 40) + "[ALTMSG.ILM]\r\n" + expectedMessages("ALTMSG", 20) +
           "[ILMVAR.DEF]\r\n" + expectedFloats() + expectedBooleans("\r\n");
}

} // namespace orvista::testing
