#pragma once

#include "component/public/gic.h"
#include "lists/list_owner.h"

namespace orvo::lists {

class frmTGList;

// The list window's Delete on a person list. A person is never deleted from here: the provider
// list ends the provider role (after the appointment book and the provider's patients have
// passed to another provider), the physician and referral lists end their role, the employee
// list sends the user to the employee screen, and a family head goes through the patient's own
// delete rules.
class PersonDeleteCommand {
public:
    PersonDeleteCommand(GIC& gic, frmTGList& window);
    void Delete_Person();

private:
    void Delete_Family_Head(int id, const QString& name);
    void Delete_Employee(int id, const QString& name);
    void Delete_Provider(int id, const QString& name);
    void Delete_Role(int id, const QString& name, const QString& roleColumn);
    // The provider who takes the patients over; 0 when the user backed out.
    int PickNewProvider(int oldId, const QString& name);

    GIC& gic_;
    frmTGList& window_;
};

}  // namespace orvo::lists
