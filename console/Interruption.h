#pragma once

namespace orvista::console {

/// Whether the command also ends when standard input does: for programs that start orvista and cannot press
/// Ctrl+C.
enum class WatchInput { No, Yes };

/// While it lives, Ctrl+C and the system's requests to end do not end the program: they are noticed here, and
/// the command ends what it began. One at a time.
class Interruption {
public:
    /// \throws std::system_error
    explicit Interruption(WatchInput input);
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    bool came() const;
    /// Takes from standard input what is there, where that counts; its end is an interruption.
    void takeInput();

#ifdef _WIN32
    /// A handle that is signalled when it came; standard input is not in it.
    void* event() const;
#else
    /// Readable when it came.
    int signals() const;
    /// Standard input where that counts, else -1. takeInput() only waits where it is not readable.
    int input() const;
#endif

private:
    bool watchesInput_;
};

} // namespace orvista::console
