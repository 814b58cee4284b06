// The library is built with hidden symbols: what a host may call carries
// QVSTDCTRLS_API.
#pragma once

#define QVSTDCTRLS_API __attribute__((visibility("default")))
