#pragma once

namespace orvista {

class MonitorPanel;
class TcpTesterPage;

/// Lets the display monitor and the test page share the display, which serves one of them at a time: the
/// monitor rests while the test page is connected. "Take into Tester" ticks the boxes of the test page.
void shareDisplay(MonitorPanel& monitor, TcpTesterPage& tester);

} // namespace orvista
