#include <pel_1_2/PELSink.h>

PELSink::~PELSink() = default;
