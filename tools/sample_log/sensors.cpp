#include "tools/sample_log/sensors.h"

#include <algorithm>
#include <cmath>

namespace {

int Stored(double value, int low, int high) { return std::clamp(static_cast<int>(std::floor(value + 0.5)), low, high); }

// Probes with a lag of their own, and inputs that the unit takes at a fraction of the log's rate.
void ReadSlowSensors(Ride& ride, const double (&noise)[8]) {
    const bool overrun = ride.throttle < 0.02 && ride.rpm > 3000;
    const double mixture = ride.gear == 0 ? 13.8 : overrun ? 14.7 : 14.3 - 1.7 * ride.throttle;
    ride.mixture += (mixture - ride.mixture) * 0.035;
    ride.water += (82 - ride.speed * 0.12 + 6 * ride.throttle - ride.water) * 0.00012;
    const double charge = 12.4 + 1.4 * std::clamp((ride.rpm - 1200) / 2600, 0.0, 1.0) - 0.15 * ride.throttle;
    ride.volts += (charge - (ride.cut > 0 ? 0.5 : 0) - ride.volts) * 0.04;
    const bool brownOut = ride.lowBattery && ride.tick % 8000 > 7880;
    BikeSample& shown = ride.shown;
    if (ride.tick % 4 == 0) shown.laf1 = Stored(ride.mixture * 100 + 5 * noise[7], 900, 1800);
    if (ride.tick % 4 == 2 || ride.tick == 0) shown.laf2 = Stored(ride.mixture * 100 + 9 + 6 * noise[0], 900, 1800);
    if (ride.tick % 40 == 0) shown.aux2 = Stored(ride.water * 100 + 3 * noise[2], 0, 12000);
    if (ride.tick % 5 == 0) shown.vb = Stored(ride.volts * 100 + 2 * noise[4] - (brownOut ? 520 : 0), 0, 2000);
}

// The hand opens and closes within a downshift.
double BlipOpening(const Ride& ride) {
    const double since = blipTicks - ride.blip;
    return ride.blip > 0 ? ride.blipSize * std::clamp(std::min(since / 6, (blipTicks - 2 - since) / 9), 0.0, 1.0) : 0;
}

void ReadFastSensors(Ride& ride, const Moment& moment) {
    const double throttle = std::max(ride.throttle, BlipOpening(ride));
    const bool turning = ride.speed > 0.8;  // below that no pulse comes in time
    BikeSample& shown = ride.shown;
    shown.ne = Stored(ride.rpm + 14 * moment.noise[3], 0, 16000);
    shown.th = Stored(throttle * 1000 + moment.noise[4], 0, 1000);
    shown.vfw = turning ? Stored(moment.frontSpeed * 36 + 0.8 * moment.noise[5], 0, 4095) : 0;
    shown.vrw = turning ? Stored(moment.rearSpeed * 36 + 1.2 * moment.noise[6], 0, 4095) : 0;
    shown.fsus = Stored(moment.frontStroke * 100 + 6 * moment.noise[5], 0, 13000);
    shown.rsus = Stored(moment.rearStroke * 100 + 4 * moment.noise[6], 0, 7500);
    shown.aux1 = Stored(ride.brake * 1250 + (ride.brake > 0 ? 4 * moment.noise[1] : 0), 0, 2000);
    shown.mark = ride.markLeft > 0;
    shown.flag = ride.cut > 0;
}

}  // namespace

void ReadSensors(Ride& ride, const Moment& moment) {
    ReadSlowSensors(ride, moment.noise);
    ReadFastSensors(ride, moment);
}
