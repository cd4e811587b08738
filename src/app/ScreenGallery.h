#pragma once

// `tolvane telas PASTA`: pictures of the screens in realistic states, for the documentation and
// for reviewing the layout without a display (runs on the offscreen platform).
int runScreens(int argc, char** argv);
