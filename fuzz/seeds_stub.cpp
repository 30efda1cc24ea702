// libFuzzer builds take their seeds from a corpus directory written by the
// standalone build (fuzz/run.sh), so nothing more is needed here.
