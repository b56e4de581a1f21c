// SPDX-License-Identifier: GPL-3.0-or-later
// Nothing of its own: CMake hangs the headers that all tests share on a target with a source.
