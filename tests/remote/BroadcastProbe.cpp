// Prints where the sound library sends datagrams for everyone on the network.
#include "tonebridge/BroadcastAddress.h"

#include <cstdio>

int main() { std::puts(tonebridge::BroadcastAddress().c_str()); }
