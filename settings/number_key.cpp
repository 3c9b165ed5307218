#include "settings/number_key.h"

#include <type_traits>

#include "run_data/fixed_point.h"

static double ScaledValue(int stored, NumberForm form) {
    return form == NumberForm::thousandths ? static_cast<uint32_t>(stored) / 1000.0 : stored * 0.01;
}

// In the variable's own precision.
template <class Scaled>
static int StoredValue(Scaled value, NumberForm form) {
    if (form == NumberForm::hundredths) return TruncToInt(value * 100);
    const double stored = value * 1000;
    if (!(stored > 0)) return 0;
    // Above 2147483647 this is the negative number that such a scale was read from.
    return static_cast<int>(stored >= 4294967295.0 ? UINT32_MAX : static_cast<uint32_t>(stored));
}

void ReadNumber(const ProfileText& profile, const NumberKey& row) {
    const int stored = ProfileInt(profile, row.section, row.key, row.standard);
    std::visit(
        [&](auto* variable) {
            using Number = std::remove_reference_t<decltype(*variable)>;
            if constexpr (std::is_same_v<Number, int>)
                *variable = row.hold ? row.hold(stored) : stored;
            else
                *variable = static_cast<Number>(ScaledValue(stored, row.form));
        },
        row.variable);
}

void WriteNumber(ProfileText& profile, const NumberKey& row) {
    std::visit(
        [&](auto* variable) {
            if constexpr (std::is_same_v<decltype(variable), int*>)
                WriteIntKey(profile, *variable, row.section, row.key);
            else
                WriteIntKey(profile, StoredValue(*variable, row.form), row.section, row.key);
        },
        row.variable);
}
