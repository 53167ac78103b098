// What a data sequence asks of the "SequenceRemap" modifier, which maps scene time to a step of
// the sequence. The modifier lives in a layer above this one and implements this interface; a
// null pointer everywhere means "no remap". Main thread only.
#pragma once

class SequenceRemapBase_cls {
public:
    virtual ~SequenceRemapBase_cls() = default;
    // The value of the modifier's parameter "Remap" at normalised time nt: a step number.
    virtual double GetRemapValue(double nt) = 0;
    // The modifier's Repeat= switch.
    virtual bool GetRemapRepeat() = 0;
    // The modifier's own mapping of a frame at time to a step, honouring Validity=, Clamp= and
    // Repeat=; count is the number of steps of the sequence.
    virtual int GetRemappedFrame(double time, int frame, int count) = 0;
};
