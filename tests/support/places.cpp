#include "support/places.h"

std::string samples_folder() {
    return ULK_SAMPLES_DIR;
}

std::string test_data_folder() {
    return ULK_TEST_DATA_DIR;
}

std::string golden_failures_folder() {
    return ULK_GOLDEN_FAILURES_DIR;
}

std::string admesh_program() {
    return ULK_ADMESH;
}
