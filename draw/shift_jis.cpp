#include "draw/shift_jis.h"

#include <algorithm>

#include "draw/shift_jis_table.h"

constexpr char16_t unknownCharacter = 0x30FB;  // katakana middle dot

static bool IsLead(uint8_t byte) { return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC); }
static bool IsTrail(uint8_t byte) { return byte >= 0x40 && byte <= 0xFC && byte != 0x7F; }

static char16_t DoubleByte(uint8_t lead, uint8_t trail) {
    const ShiftJisRow* end = shiftJisRows + shiftJisRowCount;
    const ShiftJisRow* row = std::find_if(shiftJisRows, end, [lead](const ShiftJisRow& r) { return r.lead == lead; });
    return row == end ? unknownCharacter : row->characters[trail - 0x40 - (trail > 0x7F)];
}

int DecodeShiftJis(const char* bytes, int count, char16_t* unicode) {
    const uint8_t lead = static_cast<uint8_t>(bytes[0]);
    const uint8_t trail = count > 1 ? static_cast<uint8_t>(bytes[1]) : 0;
    if (IsLead(lead) && IsTrail(trail)) {
        *unicode = DoubleByte(lead, trail);
        return 2;
    }
    const bool halfWidthKana = lead >= 0xA1 && lead <= 0xDF;
    *unicode = lead < 0x80 ? char16_t{lead} : halfWidthKana ? static_cast<char16_t>(0xFF61 + lead - 0xA1) : unknownCharacter;
    return 1;
}
