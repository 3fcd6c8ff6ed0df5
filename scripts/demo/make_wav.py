#!/usr/bin/env python3
"""Writes a short chime as a 16-bit mono WAV file (the demo's alert sound)."""
import math, struct, sys, wave

with wave.open(sys.argv[1], 'wb') as w:
    w.setnchannels(1); w.setsampwidth(2); w.setframerate(22050)
    frames = b''.join(struct.pack('<h', int(12000 * math.sin(2 * math.pi * 880 * i / 22050) * (1 - i / 6615)))
                      for i in range(6615))
    w.writeframes(frames)
