// sensors.h -- what the logger's sensors make of a moment of the ride.
#pragma once
#include "tools/sample_log/ride.h"

// Fills ride.shown. Slow probes keep what they gave last.
void ReadSensors(Ride& ride, const Moment& moment);
