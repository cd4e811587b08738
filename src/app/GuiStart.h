#pragma once

// The program on screen: single instance, start-up, then the date screen.
int runGui(int argc, char** argv);
