// The fonts of this machine, for a program that shows no window.
#pragma once

namespace tarvolinex {

// Lets the toolkit find fonts by their names in the folders of the machine and the user, without the rules of the
// desktop for screens: reading those takes a third of what starting the program does.
void UseFontsByName();

}  // namespace tarvolinex
