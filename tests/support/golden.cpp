#include "support/golden.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace testing_support {

std::map<std::string, std::vector<std::uint8_t>> ReadGolden(const char* file) {
    std::map<std::string, std::vector<std::uint8_t>> sequences;
    std::ifstream text(std::string(FOM_GOLDEN "/") + file);
    EXPECT_TRUE(text) << file;
    std::vector<std::uint8_t>* bytes = nullptr;
    for (std::string line; std::getline(text, line);) {
        std::istringstream words(line.substr(0, line.find('#')));
        for (std::string word; words >> word;) {
            if (word.front() == '[') {
                bytes = &sequences[word.substr(1, word.size() - 2)];
                continue;
            }
            for (std::size_t i = 0; i + 1 < word.size(); i += 2)
                bytes->push_back(static_cast<std::uint8_t>(std::stoi(word.substr(i, 2), nullptr, 16)));
        }
    }
    return sequences;
}

}  // namespace testing_support
