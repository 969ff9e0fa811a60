#include "places.h"

namespace {

// k outline, y folder, w light, g grey, d dark grey, b blue
constexpr const char* kPictures[kPlacePictures][13] = {
    {"  kkkkk         ", " kyyyyyk        ", "kwwwwwwwkkkkkk  ", "kwyyyyyyyyyyyyk ", "kwyyyyyyyyyyyyk ",
     "kwyyyyyyyyyyyyk ", "kwyyyyyyyyyyyyk ", "kwyyyyyyyyyyyyk ", "kwyyyyyyyyyyyyk ", "kwyyyyyyyyyyyyk ",
     "kwyyyyyyyyyyyyk ", " kkkkkkkkkkkkkk ", "                "},
    {"  kkkkk         ", " kyyyyyk        ", "kyyyyyyykkkkkk  ", "kyyyyyyyyyyyyk  ", "kyyykkkkkkkkkkkk",
     "kyyykwwwwwwwwwwk", "kyykwyyyyyyyyyk ", "kyykwyyyyyyyyyk ", "kykwyyyyyyyyyk  ", "kykwyyyyyyyyyk  ",
     "kkwyyyyyyyyyk   ", "kkkkkkkkkkkkk   ", "                "},
    {"                ", "                ", "  kkkkkkkkkkkk  ", " kggggggggggggk ", "kwwwwwwwwwwwwwwk",
     "kggggggggggggggk", "kgddddddddggbbgk", "kggggggggggggggk", "kkkkkkkkkkkkkkkk", "                ",
     "                ", "                ", "                "},
    {"  kkkkkkkkkkkk  ", " kggggggggggggk ", "kwwwwwwwwwwwwwwk", "kggggggggggggggk", "kgddddddddggbbgk",
     "kggggggggggggggk", "kkkkkkkkkkkkkkkk", "       bb       ", "       bb       ", " bbbbbkbbkbbbbb ",
     "      kbbk      ", "      kkkk      ", "                "},
    {"   kkkkkkkkkk   ", "  kddddddddddk  ", "  kdwwwwwwwwdk  ", "  kdwbbbbbbwdk  ", "  kdwwwwwwwwdk  ",
     "  kdwbbbbbbwdk  ", "  kdwwwwwwwwdk  ", "  kddddddddddk  ", "  kddwwwwwdddk  ", "  kddwwdwwdddk  ",
     "  kddwwwwwdddk  ", "   kkkkkkkkkk   ", "                "},
};

COLORREF ColorOf(char pixel)
{
    switch (pixel) {
    case 'k':
        return RGB(96, 80, 32);
    case 'y':
        return RGB(255, 216, 112);
    case 'w':
        return RGB(255, 248, 220);
    case 'g':
        return RGB(200, 200, 200);
    case 'd':
        return RGB(112, 112, 120);
    default:
        return RGB(40, 96, 200);
    }
}

} // namespace

void DrawPlacePicture(HDC dc, int x, int y, PlacePicture picture)
{
    const auto& rows = kPictures[static_cast<int>(picture)];
    for (int row = 0; row < static_cast<int>(std::size(rows)); ++row) {
        for (int column = 0; column < kPictureSize; ++column) {
            if (rows[row][column] != ' ')
                ::SetPixelV(dc, x + column, y + row + 1, ColorOf(rows[row][column]));
        }
    }
}
