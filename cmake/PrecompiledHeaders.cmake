# What most sources include, parsed once for each set of options instead of once for each source. Sources include what
# they use all the same: builds through a compiler cache do without, because such a cache cannot share what was made
# with a header of this folder, and so do those for Windows, and those that optimize fully: there GCC 12 then warns of copies
# beyond all memory that nobody makes.
if(CMAKE_CXX_COMPILER_LAUNCHER OR WIN32 OR CMAKE_BUILD_TYPE STREQUAL "Release")
  set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()
# Where the options differ from those of the header's owner, the compiler reads the text instead.
set(CMAKE_PCH_WARN_INVALID OFF)

set(ORVISTA_STANDARD_HEADERS
  <algorithm> <array> <charconv> <cstdint> <filesystem> <functional> <map> <memory> <optional> <stdexcept> <string>
  <string_view> <utility> <variant> <vector>)
set(ORVISTA_QT_HEADERS
  ${ORVISTA_STANDARD_HEADERS} <QAction> <QApplication> <QByteArray> <QCheckBox> <QComboBox> <QDateTime> <QDialog> <QDir>
  <QGridLayout> <QGroupBox> <QKeyEvent> <QLabel> <QLineEdit> <QListWidget> <QMainWindow> <QMenuBar> <QMessageBox>
  <QPainter> <QPlainTextEdit> <QPointer> <QPushButton> <QRadioButton> <QString> <QStringList> <QTabWidget> <QTimer>
  <QTreeWidget> <QVBoxLayout> <QWidget>)
