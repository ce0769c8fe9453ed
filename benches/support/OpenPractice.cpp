#include "support/OpenPractice.h"

#include "core/configuration.h"
#include "core/globals.h"
#include "core/opening.h"

namespace bench {

OpenPractice::OpenPractice(const QString& folder)
{
    core::CloseDataFiles();
    core::FillCalendarNames();
    core::DataFolder = folder;
    core::LoadConfiguration();
    core::CreateTheWorkspace();
    core::OpenDataFiles();
}

OpenPractice::~OpenPractice()
{
    core::CloseDataFiles();
}

QString OpenPractice::LastDay()
{
    return core::TheDatabase.OpenRecordset("select max(date) as S1 from Actes")["S1"].Text();
}

} // namespace bench
