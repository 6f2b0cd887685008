// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

/// Keeps the toolkit and the C library from holding memory that the program has done with; once, at
/// the start, behind the application.
///
/// Without it a program that is used all day grows: by 20 kB a file dialog, up to 10 MB, and in
/// steps of megabytes where small blocks come to lie behind those of large pictures.
void boundMemoryUse();

} // namespace veldron
