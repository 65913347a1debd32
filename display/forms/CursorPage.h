#pragma once

#include <QObject>
#include <QTextCursor>

#include <cstddef>
#include <optional>
#include <string>

class QTextDocument;

namespace orvista {

/// The one page of a long script that is being edited. As long as edits stay within it, the script need not
/// be read as a whole to show it.
class CursorPage final : public QObject {
    Q_OBJECT
public:
    /// \param document of a script box; must outlive the object
    explicit CursorPage(QTextDocument& document, QObject* parent = nullptr);

    /// The script was read as a whole: from now on the page at the cursor is followed.
    /// \param pageStart where the page begins that is shown for the cursor's line; -1 for none. Lines between
    ///     two pages show one that lies elsewhere, and are not followed.
    void follow(const QTextCursor& cursor, int pageStart);

    struct Script {
        std::string bytes;
        std::size_t cursorLine = 0; ///< within them, from 1
    };
    /// The script of the followed page alone. Nothing when the cursor has left it, something else was edited,
    /// or the edit moved the page's ends.
    std::optional<Script> script(const QTextCursor& cursor) const;

private:
    void noteEdit(int position, int removed, int added);

    QTextDocument& document_;
    QTextCursor begin_;
    QTextCursor end_;
    bool isAlone_ = false; ///< nothing else was edited
};

} // namespace orvista
