/* The sound library's seven entry points, as the program looks them up by name
 * at run time. All integers are 64 bits wide. No pointer is kept after a call.
 *
 * Threads: OutputSoundBlock is called from one thread at a time and never
 * waits. The other functions may be called from any thread. No call reports
 * a failure: without a sound server or a device the library stays silent and
 * keeps looking for one. */
#pragma once

#include <stdint.h>

#define TONEBRIDGE_EXPORT __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

/* The count that makes OutputSoundBlock begin a new stream. */
#define TONEBRIDGE_NEW_STREAM (-999)

/* Scans the sound devices and returns how many there are, 0 if no sound
 * server answers. Waits for the scan, but never longer than three seconds.
 * If it finds no output and none has been started, the default output is
 * opened as soon as there is one. */
TONEBRIDGE_EXPORT int64_t BuildSoundDeviceList(void);

/* Describes device index (0 to count - 1) of the last scan. info and name each
 * point at 1,024 bytes of the caller. info receives six unsigned
 * 32-bit integers in native byte order: number in the list, input channels,
 * output channels, number among the inputs, number among the outputs (each
 * 0xFFFFFFFF if that side is missing), and 1 if the volume can be set.
 * name receives UTF-8, at most 1,023 bytes and a zero. An index out of range
 * or a null pointer leaves both untouched. */
TONEBRIDGE_EXPORT void GetSoundDeviceInfo(int64_t index, void* info, void* name);

/* Opens output device number device, counted from 0 among the devices that have
 * outputs, in the order of the list; a number out of range means the system's
 * default. volume is 0.0 to 1.0: at 1.0 the samples do not change, at 0.5 they
 * are half as loud. Returns at once; the device opens in the
 * background, and opens again whenever it is lost. Until it opens, the default
 * one plays. */
TONEBRIDGE_EXPORT void StartSoundOutput(int64_t device, double volume);

/* Closes the output device, if one is open or opening. Returns at once. */
TONEBRIDGE_EXPORT void StopSoundOutput(void);

/* Sets the volume, from 0.0 to 4.0, where 4.0 does not change the samples: a
 * quarter of this value is the volume of StartSoundOutput. Values outside are
 * clamped, NaN is ignored. */
TONEBRIDGE_EXPORT void setSoundOutputVolume(double volume);

/* Queues count signed 16-bit mono samples in native byte order, taken at
 * rate Hz (1,000 to 250,000). They are copied before the call returns. With
 * a count of TONEBRIDGE_NEW_STREAM no samples are read: the queue is faded
 * out and dropped, and a new stream at rate begins. A block with another rate
 * than the one before begins a new stream too. Any other count below 1,
 * a null pointer and a rate out of range are ignored. Samples that do
 * not fit into the queue are dropped. */
TONEBRIDGE_EXPORT void OutputSoundBlock(int64_t count, const int16_t* samples, int64_t rate);

/* Sends length bytes (0 to 65,507) as one UDP datagram to port (1 to
 * 65,535) at the broadcast address of the local network. Anything else, and a
 * datagram that can't be sent, is dropped. */
TONEBRIDGE_EXPORT void SendUdpCommand(const void* data, int64_t length, int64_t port);

#ifdef __cplusplus
}
#endif
