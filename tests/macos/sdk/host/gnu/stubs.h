#pragma once

// In front of the C library's own, which names what its architecture lacks.
