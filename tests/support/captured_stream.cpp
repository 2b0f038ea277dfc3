#include "support/captured_stream.h"

#include <ostream>

namespace ulk_test {

captured_stream::captured_stream(std::ostream& captured)
    : stream(captured), original(captured.rdbuf(taken.rdbuf())) {}

captured_stream::~captured_stream() {
    stream.rdbuf(original);
    stream.clear();
}

}  // namespace ulk_test
