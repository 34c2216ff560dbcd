#ifndef TURNED_BANNER_H
#define TURNED_BANNER_H

// Prints `text` in the banner font in each of its four rotations, one after the other, as
// text art, each drawn from its own rotation's records as a turned display shows it.
void PrintTurnedBanners(const char* text);

#endif
