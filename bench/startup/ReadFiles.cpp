#include <fstream>
#include <iterator>
#include <string>

/// The least a program can do with files: reads those it is given, and tells that there was something in
/// them.
int main(int count, char* paths[]) {
    std::size_t size = 0;
    for (int i = 1; i < count; ++i) {
        std::ifstream file(paths[i], std::ios::binary);
        size += std::string(std::istreambuf_iterator<char>(file), {}).size();
    }
    return size > 0 ? 0 : 1;
}
