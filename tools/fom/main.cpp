#include <iostream>

#include "fom/console.h"
#include "fom/counted_heap.h"
#include "fom/run.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    command::Console console(std::cout, std::cerr, command::IsErrorTerminal());
    return command::Run(argc, argv, console, command::CountedHeap);
}
