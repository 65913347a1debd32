#include "console/Program.h"
#include "model/SystemPath.h"

#ifdef _WIN32
// The arguments as Windows has them, in every language.
int wmain(int count, wchar_t* values[]) {
#else
int main(int count, char* values[]) {
#endif
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(orvista::utf8Path(values[i]));
    return orvista::console::runProgram(std::move(arguments));
}
