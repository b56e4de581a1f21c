// SPDX-License-Identifier: GPL-3.0-or-later
// The benchmarks, each registered as "what/zelto" beside its baseline "what/base".
#pragma once

#include "bench/whole_report.h"

#include <QString>

namespace zelto::bench {

/// "caricamento": loading the job against a scan of its tables.
void registerLoading(const QString& jobPath);

/// "conversione": converting a job of the edition for Windows against writing its rows.
void registerConversion(const QString& original);

/// "quota": one share against one printf.
void registerShares();

/// "registrazione": recording the report against writing bytes. The report outlives the benchmarks.
void registerRecording(WholeReport& report);

/// "pdf": printing the recorded pages against a painter that draws the same.
void registerPdf(WholeReport& report);

} // namespace zelto::bench
