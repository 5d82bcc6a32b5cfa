// What the maker's installer packages and branding decide. These are believable development values; a release
// build supplies its own copy of this header with `cmake -DV5_PRODUCT_DIR=<folder>`.
#pragma once

namespace v5::product {}
