#pragma once

#include "simulator/LogModel.h"

#include <QTableView>

namespace orvista {

/// The log, following its last line while that is in sight.
class LogView final : public QTableView {
    Q_OBJECT

public:
    explicit LogView(LogModel& log, QWidget* parent = nullptr);

private:
    bool follows_ = true;
};

} // namespace orvista
