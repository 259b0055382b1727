#include "windows/App.hpp"

int main(int argc, char** argv) { return quill::_Main(argc, argv); }
