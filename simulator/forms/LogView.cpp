#include "simulator/forms/LogView.h"

#include <QHeaderView>
#include <QScrollBar>

namespace orvista {

LogView::LogView(LogModel& log, QWidget* parent) : QTableView(parent) {
    setObjectName("log");
    setAccessibleName(tr("Log of requests"));
    setModel(&log);
    setSelectionBehavior(SelectRows);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + fontMetrics().height() / 3);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    const auto wide = [this](const char* sample) { return fontMetrics().horizontalAdvance(sample) * 5 / 4; };
    setColumnWidth(LogModel::Time, wide("00:00:00.000"));
    setColumnWidth(LogModel::Sender, wide("127.0.0.1:00000"));
    setColumnWidth(LogModel::Words, wide("Write Multiple Coils 300..319: 1, 2, 3 on"));
    connect(&log, &LogModel::rowsAboutToBeInserted, this,
            [this] { follows_ = verticalScrollBar()->value() == verticalScrollBar()->maximum(); });
    connect(&log, &LogModel::rowsInserted, this, [this] {
        if (follows_)
            scrollToBottom();
    });
}

} // namespace orvista
