# What most sources with windows and most tests include, parsed once for each set of options instead of once for each
# source: half of the time that such a source takes. Only ./test asks for it, and not through a compiler cache, which
# cannot share what was made with a header of one folder. Everywhere else headers are read as text, which keeps it true
# that each source includes what it uses.
set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON CACHE BOOL "Read every header as text")

set(ORVISTA_QT_HEADERS
  <QAction> <QApplication> <QByteArray> <QCheckBox> <QComboBox> <QDateTime> <QDialog> <QDir> <QGridLayout> <QGroupBox>
  <QKeyEvent> <QLabel> <QLineEdit> <QListWidget> <QMainWindow> <QMenuBar> <QMessageBox> <QPainter> <QPlainTextEdit>
  <QPointer> <QPushButton> <QRadioButton> <QString> <QStringList> <QTabWidget> <QTableView> <QTimer> <QTreeWidget>
  <QVBoxLayout> <QWidget>)
