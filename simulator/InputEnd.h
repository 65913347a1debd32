#pragma once

namespace orvista {

/// From now on the program goes on where nobody is left to read what it prints.
void outliveReaders();

/// From now on the program ends in order when standard input does: whoever started it holds the other end,
/// and has ended, too, perhaps without being able to say so.
void quitWhenInputEnds();

} // namespace orvista
