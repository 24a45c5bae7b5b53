// Plays sequences on the facade: what the players of other languages are compared with.

#include "languages/Player.h"

#include <exception>
#include <fstream>
#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "play_cpp SEQUENCES\n";
        return 2;
    }
    try {
        std::ifstream file(argv[1]);
        Languages::Player player;
        for (std::string line; std::getline(file, line);)
            if (auto const outcome = player.take(line))
                std::cout << player.logged(*outcome) << '\n';
        return file.eof() ? 0 : 1;
    } catch (std::exception const& failure) {
        std::cerr << failure.what() << '\n';
    }
    return 1;
}
