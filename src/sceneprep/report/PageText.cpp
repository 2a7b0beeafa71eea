#include <sceneprep/report/PageText.h>

namespace Sceneprep::Report
{

bool HasPage() { return !GetPageText().beforeData.empty(); }

const PageText& GetPageText()
{
    static const PageText text = {
#ifdef SCENEPREP_PAGE_TEXT
#include SCENEPREP_PAGE_TEXT
#endif
    };
    return text;
}

}  // namespace Sceneprep::Report
