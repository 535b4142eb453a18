// zu_slack_model.h: the storage of the classes that consist of a zu___Slack, as a model that writes every rule of it out
// plainly once more, and operations on a few variables, some of which hold the same object.
#pragma once

#include "zu_test_support.h"

// What a sequence is to hold, and how its storage is to be laid out; a new one begins with FRONT free elements.
template <typename ELEMENT, ZU_INT FRONT>
struct SLACK_MODEL {
    std::vector<ELEMENT> items;
    ZU_INT fspace = FRONT;
    ZU_INT bspace = 64 - FRONT;
    bool heap = false;
    bool isEmptyOne = true; // the shared one
    bool shared = true;     // before an operation
    bool exchanged = false; // by an operation, for another object

    ZU_INT length() const
    {
        return (ZU_INT)items.size();
    }
    std::vector<ELEMENT> part( ZU_INT offset, ZU_INT count ) const
    {
        return { items.begin() + offset, items.begin() + offset + count };
    }
    void lay( ZU_INT newFspace, ZU_INT newBspace )
    {
        fspace = newFspace;
        bspace = newBspace;
    }
    void become( const std::vector<ELEMENT> &all )
    {
        *this = SLACK_MODEL();
        isEmptyOne = shared = false;
        exchanged = true;
        insert( 0, all );
    }
    void unshare()
    {
        if ( shared ) {
            become( std::vector<ELEMENT>( items ) );
        }
    }
    void clear()
    {
        bool wasEmptyOne = isEmptyOne;
        *this = SLACK_MODEL();
        exchanged = !wasEmptyOne;
    }
    void insert( ZU_INT at, const std::vector<ELEMENT> &added )
    {
        ZU_INT count = (ZU_INT)added.size();
        if ( count == 0 ) {
            return;
        }
        if ( shared ) {
            std::vector<ELEMENT> all = items;
            all.insert( all.begin() + at, added.begin(), added.end() );
            become( all ); // in one step
            return;
        }
        ZU_INT all = fspace + bspace;
        bool front = at == 0;
        bool end = !front && at == length();
        if ( ( front ? fspace : bspace ) >= count ) {
            ( front ? fspace : bspace ) -= count;
        } else if ( all >= count && !( end && heap ) ) {
            front || end ? lay( 0, all - count ) : lay( all - count, 0 );
        } else {
            lay( end ? fspace : 32, 32 );
            heap = true;
        }
        items.insert( items.begin() + at, added.begin(), added.end() );
    }
    void set( ZU_INT idx, ELEMENT item )
    {
        if ( idx == -1 || idx == length() ) {
            insert( std::max<ZU_INT>( idx, 0 ), { item } );
        } else {
            unshare();
            items[ (size_t)idx ] = item;
        }
    }
    void take( ZU_INT offset, ZU_INT count )
    {
        unshare();
        items.erase( items.begin() + offset, items.begin() + offset + count );
        ( offset == 0 && count > 0 ? fspace : bspace ) += count;
    }
    void compact()
    {
        if ( items.empty() ) {
            lay( ( fspace + bspace ) / 2, ( fspace + bspace + 1 ) / 2 );
        } else if ( heap && ( fspace > 64 || bspace > 64 ) ) {
            heap = length() > 64;
            heap ? lay( 32, 32 ) : lay( 0, 64 - length() );
        }
    }
    void del( ZU_INT offset, ZU_INT count )
    {
        if ( count == length() && count > 0 ) {
            clear();
        } else if ( count > 0 ) {
            take( offset, count );
            compact();
        }
    }
    void keep( ZU_INT offset, ZU_INT count )
    {
        if ( count == 0 && length() > 0 ) {
            clear();
        } else if ( count < length() ) {
            take( offset + count, length() - offset - count );
            take( 0, offset );
            compact();
        }
    }
};

// CLASS tells what a class calls the things that are looked at, and by SLACK_CLASS the operations that all have.
#define SLACK_PARTS( name, function )                        \
    static constexpr auto name##Inner = function##Inner;     \
    static constexpr auto name##Outer = function##Outer;     \
    static constexpr auto name##Leading = function##Leading; \
    static constexpr auto name##Trailing = function##Trailing
#define SLACK_FORMS( name, function )      \
    static constexpr auto name = function; \
    SLACK_PARTS( name, function )
#define SLACK_CLASS( prefix )                        \
    static constexpr auto Create = prefix##Create;   \
    static constexpr auto Backing = prefix##Backing; \
    static constexpr auto Clear = prefix##Clear;     \
    SLACK_FORMS( CreateFrom, prefix##CreateFrom );   \
    SLACK_FORMS( Insert, prefix##Insert );           \
    SLACK_FORMS( Append, prefix##Append );           \
    SLACK_FORMS( Prepend, prefix##Prepend );         \
    SLACK_PARTS( Del, prefix##Del )
template <typename CLASS>
class SlackOperations : public testing::TestWithParam<unsigned> {
protected:
    typedef typename CLASS::OWNER OWNER;
    typedef typename CLASS::ELEMENT ELEMENT;
    typedef SLACK_MODEL<ELEMENT, CLASS::FRONT> MODEL;
    struct HOLDER {
        zu::Ref<OWNER> ref = zu::adopt( CLASS::Create() );
        MODEL model;
    };
    std::mt19937 random{ GetParam() };
    std::array<HOLDER, 3> holders;
    bool growing = true;

    // What a class has beside those; each tells whether it has done something.
    virtual bool createOwn( HOLDER &holder ) = 0;
    virtual bool insertOwn( HOLDER &holder ) = 0;
    virtual bool removeOwn( HOLDER &holder ) = 0;

    ZU_INT between( ZU_INT least, ZU_INT most )
    {
        return std::uniform_int_distribution<ZU_INT>( least, most )( random );
    }
    // Mostly few, so that the steps in which free space runs out one by one are seen, and seldom many.
    ZU_INT some( ZU_INT most )
    {
        return std::min( most, between( 0, between( 0, 9 ) == 0 ? 200 : 7 ) );
    }
    // Mostly at an end
    ZU_INT place( ZU_INT last )
    {
        return between( 0, 2 ) == 0 ? between( 0, last ) : between( 0, 1 ) * last;
    }
    // Calls one of the three forms of an insertion, and returns where it inserts.
    template <typename INSERT, typename APPEND, typename PREPEND, typename... ARGS>
    ZU_INT put( OWNER **owner, INSERT insertAt, APPEND append, PREPEND prepend, ARGS... args )
    {
        ZU_INT length = ( *owner )->length;
        ZU_INT idx = between( 0, length );
        switch ( between( 0, 3 ) ) {
        case 0:
            prepend( owner, args... );
            return 0;
        case 1:
            insertAt( owner, idx, args... );
            return idx;
        default:
            append( owner, args... );
            return length;
        }
    }
#define SLACK_PUT( owner, prefix, form, ... ) \
    put( owner, prefix##Insert##form, prefix##Append##form, prefix##Prepend##form, __VA_ARGS__ )
#define SLACK_PUT_PART( owner, form, ... ) \
    put( owner, CLASS::Insert##form, CLASS::Append##form, CLASS::Prepend##form, __VA_ARGS__ )
    void take( HOLDER &holder, OWNER *made, const std::vector<ELEMENT> &wanted )
    {
        holder.model.become( wanted );
        holder.ref = zu::adopt( made );
    }
    void create( HOLDER &holder, const HOLDER &other )
    {
        OWNER *src = other.ref.get();
        const MODEL from = other.model;
        ZU_INT length = from.length(), offset = place( length ), count = place( length - offset );
        switch ( between( 0, 5 ) ) {
        case 0:
            return take( holder, CLASS::CreateFrom( src ), from.items );
        case 1:
            return take( holder, CLASS::CreateFromInner( src, offset, count ), from.part( offset, count ) );
        case 2:
            return take( holder, CLASS::CreateFromLeading( src, offset ), from.part( 0, offset ) );
        case 3:
            return take( holder, CLASS::CreateFromTrailing( src, offset ), from.part( length - offset, offset ) );
        case 4:
            take( holder, CLASS::CreateFromOuter( src, offset, count ),
                  from.part( offset + count, length - offset - count ) );
            return holder.model.insert( 0, from.part( 0, offset ) );
        default:
            holder = HOLDER( other );
        }
    }
    void insert( HOLDER &holder, const HOLDER &other )
    {
        OWNER **owner = holder.ref.inOut();
        OWNER *src = other.ref.get();
        MODEL &model = holder.model;
        const MODEL from = other.model;
        ZU_INT length = from.length(), count = some( length ), offset = place( length - count ), idx;
        model.shared |= src == *owner; // held over the change
        switch ( between( 0, 4 ) ) {
        case 0:
            return model.insert( SLACK_PUT_PART( owner, , src ), from.items );
        case 1:
            return model.insert( SLACK_PUT_PART( owner, Inner, src, offset, count ), from.part( offset, count ) );
        case 2:
            return model.insert( SLACK_PUT_PART( owner, Leading, src, count ), from.part( 0, count ) );
        case 3:
            return model.insert( SLACK_PUT_PART( owner, Trailing, src, count ), from.part( length - count, count ) );
        default:
            count = length - count; // left out
            offset = place( length - count );
            idx = SLACK_PUT_PART( owner, Outer, src, offset, count );
            model.insert( idx, from.part( offset + count, length - offset - count ) );
            return model.insert( idx, from.part( 0, offset ) );
        }
    }
    void remove( HOLDER &holder )
    {
        OWNER **owner = holder.ref.inOut();
        MODEL &model = holder.model;
        ZU_INT length = model.length(), count = some( length ), offset = place( length - count );
        switch ( between( 0, 9 ) ) {
        case 0:
            model.clear();
            return CLASS::Clear( owner );
        case 1:
            offset = place( count );
            model.keep( offset, length - count );
            return CLASS::DelOuter( owner, offset, length - count );
        case 2:
        case 3:
            model.del( offset, count );
            return CLASS::DelInner( owner, offset, count );
        case 4:
        case 5:
        case 6:
            model.del( 0, count );
            return CLASS::DelLeading( owner, count );
        default:
            model.del( length - count, count );
            return CLASS::DelTrailing( owner, count );
        }
    }
    void step()
    {
        HOLDER &holder = holders[ (size_t)between( 0, 2 ) ];
        HOLDER &other = holders[ (size_t)between( 0, 2 ) ];
        if ( between( 0, 9 ) == 0 ) {
            return between( 0, 1 ) && createOwn( holder ) ? void() : create( holder, other );
        }
        OWNER *old = holder.ref.get();
        holder.model.shared = ZU_REF_RETAIN_COUNT( old ) > 1;
        holder.model.exchanged = false;
        growing = holder.model.length() < 600 && ( between( 0, 199 ) == 0 ? !growing : growing );
        bool own = between( 0, 1 ) && ( growing ? insertOwn( holder ) : removeOwn( holder ) );
        own ? void() : growing ? insert( holder, other ) : remove( holder );
        EXPECT_EQ( holder.ref.get() != old, holder.model.exchanged );
    }
    void check()
    {
        zu::Ref<OWNER> empty = zu::adopt( CLASS::Create() );
        for ( const HOLDER &holder : holders ) {
            OWNER *owner = holder.ref.get();
            const MODEL &model = holder.model;
            ASSERT_EQ( std::vector<ELEMENT>( CLASS::Backing( owner ), CLASS::Backing( owner ) + owner->length ),
                       model.items );
            ASSERT_EQ( owner->fspace, model.fspace );
            ASSERT_EQ( owner->bspace, model.bspace );
            ASSERT_EQ( CLASS::onHeap( owner ), model.heap );
            ASSERT_EQ( zu___ObjDbgAllocationSize( &owner->obj ),
                       model.heap ? (ZU_INT)sizeof( ELEMENT ) * ( model.fspace + model.length() + model.bspace ) : 0 );
            ASSERT_EQ( owner == empty.get(), model.isEmptyOne );
            auto isHere = [ owner ]( const HOLDER &each ) { return each.ref.get() == owner; };
            if ( owner != empty.get() ) {
                ASSERT_EQ( ZU_REF_RETAIN_COUNT( owner ), std::count_if( holders.begin(), holders.end(), isHere ) );
            }
        }
    }
};
