#pragma once

namespace kb::reports {

class TFormClientItemsSortOrder;
class TFormDeliveryDietCriteria;
class TFormItemLimitation;
class TFormLabelLimit;

// The questions a delivery report asks before it runs. The desktop shows
// each dialog over its presenter; a headless command fills the presenter
// from its options; tests answer from a script. Each returns true for OK,
// false for Cancel.
class ReportQuestions
{
public:
    virtual ~ReportQuestions() = default;
    virtual bool askDietCriteria(TFormDeliveryDietCriteria& form) = 0;
    virtual bool askClientItemsSortOrder(TFormClientItemsSortOrder& form) = 0;
    virtual bool askItemLimitation(TFormItemLimitation& form) = 0;
    // Cancel here still prints the labels, for every delivery.
    virtual bool askLabelLimit(TFormLabelLimit& form) = 0;
};

} // namespace kb::reports
